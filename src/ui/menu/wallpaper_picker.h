#pragma once

#include <functional>

#include "platform/value.h"

namespace hushpane {

// Lets the user choose a picture, and hands over a bookmark of it. `picked` is not called when the user thinks better
// of it, or when the choice cannot be kept.
void openWallpaperPicker(std::function<void(platform::Data bookmark)> picked);

}  // namespace hushpane

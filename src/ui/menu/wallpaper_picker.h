#pragma once

#include <functional>
#include <string_view>

#include "platform/value.h"

namespace hushpane {

// Posted on the default notification center when the user is about to choose a picture. Windows that lie above those of
// other programs or keep the keyboard to themselves have to give way.
inline constexpr std::string_view wallpaperPickerWillOpen = "com.corvane.Hushpane.wallpaperPickerWillOpen";

// Lets the user choose a picture, and hands over a bookmark of it. `picked` is not called when the user thinks better
// of it, or when the choice cannot be kept.
void openWallpaperPicker(std::function<void(platform::Data bookmark)> picked);

}  // namespace hushpane

#pragma once

#include "platform/screen.h"

namespace hushpane::x11 {

// Where the icon was clicked that a host of notifiers shows: it tells a place, and the pointer is somewhere. Points of
// the desktop.
platform::Point clickedPlace(platform::Point told, platform::Point pointer, const platform::Screens& screens);

}  // namespace hushpane::x11

#pragma once

#include <string_view>

namespace hushpane::x11 {

// How many pixels a point has, by the resources of the X server (the property RESOURCE_MANAGER of the root window):
// Xft.dpi to the 96 dots per inch of an ordinary screen, in quarters between 1 and 4. 1 where they say nothing of use.
double scaleIn(std::string_view resources);

}  // namespace hushpane::x11

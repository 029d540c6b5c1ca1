#include "desktops/x11/clicked_place.h"

#include <algorithm>
#include <cmath>

namespace hushpane::x11 {

namespace {

constexpr double reachOfIcon = 40;  // points

const platform::Screen* screenAt(platform::Point point, const platform::Screens& screens) {
  const auto& all = screens.screens();
  const auto found = std::ranges::find_if(all, [&](const auto& screen) { return screen.frame.contains(point); });
  return found == all.end() ? nullptr : &*found;
}

}  // namespace

// Hosts tell the icon's place; or that within the bar, or in other units, or the corner of the root where they know
// none. So a pointer that is in a bar is believed rather than a host that tells of elsewhere, but not one that is on
// the desktop, for icons are clicked by keys as well.
platform::Point clickedPlace(platform::Point told, platform::Point pointer, const platform::Screens& screens) {
  if (std::hypot(told.x - pointer.x, told.y - pointer.y) <= reachOfIcon) return told;
  const auto* under = screenAt(pointer, screens);
  const bool isInBar = under && !screens.visibleFrame(*under).contains(pointer);
  return isInBar || !screenAt(told, screens) ? pointer : told;
}

}  // namespace hushpane::x11

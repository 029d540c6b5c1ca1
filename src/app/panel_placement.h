#pragma once

#include "platform/geometry.h"

namespace hushpane {

// Where a panel stands. Points of the desktop; sizes and frames are those of the panel itself, without its shadow.
namespace placement {

// Beneath the anchor's middle, or above it when the anchor lies in the lower half of the display; `distance` away from
// it and at least as far from the edges of `visible`, the free part of the display. A panel that is too large sticks
// out at the bottom or at the far side.
platform::Rect beside(const platform::Rect& anchor, platform::Size size, const platform::Rect& display,
                      const platform::Rect& visible, double distance);
bool isAbove(const platform::Rect& anchor, const platform::Rect& display);

// For a list that opens at a label: beneath it, or above it where there is more room. Its height is at most the room
// that there is.
platform::Rect pullDown(const platform::Rect& label, platform::Size size, const platform::Rect& visible,
                        double distance);
// The height that a list at that label can have.
double room(const platform::Rect& label, const platform::Rect& visible, double distance);

// The corner of the display where its bar is, else the top right one: an anchor without size, just inside `visible`.
platform::Rect corner(const platform::Rect& display, const platform::Rect& visible);

}  // namespace placement

}  // namespace hushpane

#pragma once

#include <optional>

#include "desktops/x11/connection.h"
#include "desktops/x11/pixel_rect.h"

namespace hushpane::x11 {

// How bright a part of a window or of the whole screen is on average, from 0 (black) to 1 (white); nothing where it
// cannot be seen. Waits for the server.
std::optional<double> brightnessOf(Connection& connection, xcb_window_t window, const PixelRect& area);

}  // namespace hushpane::x11

#pragma once

#include <string_view>

#include "desktops/x11/connection.h"

namespace hushpane::x11 {

// Tells everybody what a window of the program is: its name, class and process, and that it is on every workspace. Its
// type keeps compositors from fading it, and most of them from drawing a shadow around it.
void introduceOwnWindow(Connection& connection, xcb_window_t window, std::string_view name);

void setWindowNumber(Connection& connection, xcb_window_t window, std::string_view property, xcb_atom_t type,
                     std::uint32_t value);

// Asks a compositor to fade the window as a whole.
void publishOpacity(Connection& connection, xcb_window_t window, double opacity);

}  // namespace hushpane::x11

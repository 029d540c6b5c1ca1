#pragma once

#include <string_view>

#include "desktops/x11/connection.h"
#include "desktops/x11/pixel_rect.h"

namespace hushpane::x11 {

inline constexpr std::string_view overlayName = "Hushpane";

// Tells everybody what a window of the program is: its name, class and process, and that it is on every workspace. The
// type of a dock keeps compositors from fading it, and most of them from drawing a shadow around it.
void introduceOwnWindow(Connection& connection, xcb_window_t window, std::string_view name,
                        std::string_view type = "_NET_WM_WINDOW_TYPE_DOCK");

// Tells a window manager, before the map, how to keep an overlay: where it is, in no list, never with the focus,
// without a frame that anybody sees, and beneath all others or not (ICCCM 4.1.2, EWMH).
void introduceToManager(Connection& connection, xcb_window_t window, const PixelRect& bounds, bool isBeneath);

// What an overlay has in the hands of a window manager, of which its shape leaves the display. Some take a window
// without a frame that is just as large as the screen for one of full screen and put their bars away, and move one that
// does not fit beside the bars of its display to another display where it does; one that is higher than all is left
// alone. Waits for the server.
PixelRect managedBounds(Connection& connection, const PixelRect& bounds);

// A compositor must not paint other windows past a large one.
void forbidBypass(Connection& connection, xcb_window_t window);

void configureBounds(Connection& connection, xcb_window_t window, const PixelRect& bounds);

void setWindowNumber(Connection& connection, xcb_window_t window, std::string_view property, xcb_atom_t type,
                     std::uint32_t value);

// Asks a compositor to fade the window as a whole.
void publishOpacity(Connection& connection, xcb_window_t window, double opacity);

}  // namespace hushpane::x11

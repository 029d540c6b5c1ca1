#pragma once

#include <xcb/xfixes.h>

#include <span>

#include "desktops/x11/connection.h"
#include "desktops/x11/stack_model.h"
#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

using Region = Handle<xcb_xfixes_destroy_region>;

// A region of rectangles, empty without any.
Region makeRegion(Connection& connection, std::span<const xcb_rectangle_t> rectangles = {});

// The shape of a window with its border, as the server keeps it, in coordinates that have their origin at `corner` of
// the root.
Region shapeOf(Connection& connection, const StackEntry& entry, const PixelRect& corner);

}  // namespace hushpane::x11

#pragma once

#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {

// A desktop picture in two colours, left and right of a vertical edge, set the way wallpaper programs do: a pixmap that
// outlives its client, named by _XROOTPMAP_ID, as the root's background.
inline void setRootPicture(const std::string& display, int edge, Pixel left, Pixel right) {
  const XConnection x(display);
  const xcb_screen_t& screen = x.screen();
  xcb_set_close_down_mode(x.get(), XCB_CLOSE_DOWN_RETAIN_PERMANENT);
  const xcb_pixmap_t pixmap = xcb_generate_id(x.get());
  xcb_create_pixmap(x.get(), screen.root_depth, pixmap, x.root(), screen.width_in_pixels, screen.height_in_pixels);
  const auto fill = [&](Pixel color, int from, int to) {
    const xcb_gcontext_t context = xcb_generate_id(x.get());
    xcb_create_gc(x.get(), context, pixmap, XCB_GC_FOREGROUND, &color.value);
    const xcb_rectangle_t area{static_cast<std::int16_t>(from), 0, static_cast<std::uint16_t>(to - from),
                               screen.height_in_pixels};
    xcb_poly_fill_rectangle(x.get(), pixmap, context, 1, &area);
    xcb_free_gc(x.get(), context);
  };
  if (edge > 0) fill(left, 0, edge);
  fill(right, edge, screen.width_in_pixels);
  xcb_change_window_attributes(x.get(), x.root(), XCB_CW_BACK_PIXMAP, &pixmap);
  xcb_clear_area(x.get(), 0, x.root(), 0, 0, 0, 0);
  x.setNumbers(x.root(), "_XROOTPMAP_ID", "PIXMAP", {pixmap});
}

}  // namespace hushpane::x11_tests

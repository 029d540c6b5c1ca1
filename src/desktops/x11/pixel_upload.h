#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <span>

namespace hushpane::x11 {

// Sends the pixels of a whole pixmap of depth 32, row by row from the top, 0xAARRGGBB. They are turned into the
// server's byte order in place.
void uploadPixels(xcb_connection_t* server, xcb_pixmap_t pixmap, int width, int height,
                  std::span<std::uint32_t> pixels);

}  // namespace hushpane::x11

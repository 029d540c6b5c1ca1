#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <span>

#include "desktops/x11/pixel_rect.h"

namespace hushpane::x11 {

// Sends the pixels of an area of a drawable of depth 32, row by row from the top, 0xAARRGGBB. They are turned into the
// server's byte order in place.
void uploadPixels(xcb_connection_t* server, xcb_drawable_t drawable, const PixelRect& area,
                  std::span<std::uint32_t> pixels);

}  // namespace hushpane::x11

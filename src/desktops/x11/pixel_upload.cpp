#include "desktops/x11/pixel_upload.h"

#include <algorithm>
#include <bit>

namespace hushpane::x11 {

namespace {

constexpr std::uint32_t bytesPerRequest = 256 * 1024;
constexpr std::uint32_t requestHeader = 64;  // more than enough bytes
constexpr std::uint8_t depth = 32;

std::uint32_t swapped(std::uint32_t pixel) {
  return pixel << 24 | (pixel & 0xff00) << 8 | (pixel >> 8 & 0xff00) | pixel >> 24;
}

}  // namespace

void uploadPixels(xcb_connection_t* server, xcb_drawable_t drawable, const PixelRect& area,
                  std::span<std::uint32_t> pixels) {
  const auto hostOrder =
      std::endian::native == std::endian::little ? XCB_IMAGE_ORDER_LSB_FIRST : XCB_IMAGE_ORDER_MSB_FIRST;
  if (xcb_get_setup(server)->image_byte_order != hostOrder) std::ranges::transform(pixels, pixels.begin(), swapped);
  const auto longest = std::min(bytesPerRequest, xcb_get_maximum_request_length(server) * 4) - requestHeader;
  const auto bytesPerRow = static_cast<std::uint32_t>(area.width) * 4;
  const int rowsPerRequest = std::max(1, static_cast<int>(longest / bytesPerRow));
  const auto context = xcb_generate_id(server);
  xcb_create_gc(server, context, drawable, 0, nullptr);
  for (int row = 0; row < area.height; row += rowsPerRequest) {
    const int rows = std::min(rowsPerRequest, area.height - row);
    const auto* first = pixels.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(area.width);
    xcb_put_image(server, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, context, static_cast<std::uint16_t>(area.width),
                  static_cast<std::uint16_t>(rows), static_cast<std::int16_t>(area.x),
                  static_cast<std::int16_t>(area.y + row), 0, depth, bytesPerRow * static_cast<std::uint32_t>(rows),
                  reinterpret_cast<const std::uint8_t*>(first));
  }
  xcb_free_gc(server, context);
}

}  // namespace hushpane::x11

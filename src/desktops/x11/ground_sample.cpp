#include "desktops/x11/ground_sample.h"

#include <algorithm>
#include <cstdint>

#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

constexpr std::uint32_t allPlanes = 0xffffffff;
constexpr int bytesPerPixel = 4;

bool hasFourBytes(const Connection& connection, std::uint8_t depth) {
  auto formats = xcb_setup_pixmap_formats_iterator(xcb_get_setup(connection.get()));
  for (; formats.rem > 0; xcb_format_next(&formats))
    if (formats.data->depth == depth) return formats.data->bits_per_pixel == 8 * bytesPerPixel;
  return false;
}

// Of a pixel 0xAARRGGBB in the server's byte order.
double brightness(const std::uint8_t* pixel, bool isLowestFirst) {
  const double red = pixel[isLowestFirst ? 2 : 1], green = pixel[isLowestFirst ? 1 : 2],
               blue = pixel[isLowestFirst ? 0 : 3];
  return (0.299 * red + 0.587 * green + 0.114 * blue) / 255;
}

}  // namespace

std::optional<double> brightnessOf(Connection& connection, xcb_window_t window, const PixelRect& area) {
  if (area.isEmpty()) return std::nullopt;
  const auto cookie =
      xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<std::int16_t>(area.x),
                    static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                    static_cast<std::uint16_t>(area.height), allPlanes);
  const Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection.get(), cookie, nullptr));
  if (!reply || !hasFourBytes(connection, reply->depth)) return std::nullopt;
  const int pixels = std::min(area.width * area.height, xcb_get_image_data_length(reply.get()) / bytesPerPixel);
  if (pixels == 0) return std::nullopt;
  const bool isLowestFirst = xcb_get_setup(connection.get())->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
  double sum = 0;
  for (int index = 0; index < pixels; ++index)
    sum += brightness(xcb_get_image_data(reply.get()) + index * bytesPerPixel, isLowestFirst);
  return sum / pixels;
}

}  // namespace hushpane::x11

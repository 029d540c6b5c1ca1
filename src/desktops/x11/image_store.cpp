#include "desktops/x11/image_store.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "desktops/x11/image_scale.h"

namespace hushpane::x11 {

namespace {

constexpr std::uint32_t bytesPerRequest = 256 * 1024;
constexpr std::uint32_t requestHeader = 64;  // more than enough bytes
constexpr std::uint8_t depth = 32;

std::uint32_t swapped(std::uint32_t pixel) {
  return pixel << 24 | (pixel & 0xff00) << 8 | (pixel >> 8 & 0xff00) | pixel >> 24;
}

}  // namespace

xcb_render_picture_t ImageStore::picture(const platform::ImagePtr& image, int width, int height) {
  auto& stored = images_[image.get()];
  stored.isUsed = true;
  if (!stored.surface.hasSize(width, height)) {
    stored.image = image;
    stored.surface = render_.makeSurface(SurfaceFormat::argb, width, height);
    upload(*image, stored.surface);
  }
  return stored.surface.picture.get();
}

void ImageStore::freeUnused() {
  std::erase_if(images_, [](const auto& entry) { return !entry.second.isUsed; });
  for (auto& entry : images_) entry.second.isUsed = false;
}

void ImageStore::upload(const platform::Image& image, const Surface& surface) {
  auto* const server = connection_.get();
  auto pixels = aspectFilled(image, surface.width, surface.height);
  const auto hostOrder =
      std::endian::native == std::endian::little ? XCB_IMAGE_ORDER_LSB_FIRST : XCB_IMAGE_ORDER_MSB_FIRST;
  if (xcb_get_setup(server)->image_byte_order != hostOrder) std::ranges::transform(pixels, pixels.begin(), swapped);
  const auto longest = std::min(bytesPerRequest, xcb_get_maximum_request_length(server) * 4) - requestHeader;
  const auto bytesPerRow = static_cast<std::uint32_t>(surface.width) * 4;
  const int rowsPerRequest = std::max(1, static_cast<int>(longest / bytesPerRow));
  const auto context = xcb_generate_id(server);
  xcb_create_gc(server, context, surface.pixmap.get(), 0, nullptr);
  for (int row = 0; row < surface.height; row += rowsPerRequest) {
    const int rows = std::min(rowsPerRequest, surface.height - row);
    const auto* first = pixels.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(surface.width);
    xcb_put_image(server, XCB_IMAGE_FORMAT_Z_PIXMAP, surface.pixmap.get(), context,
                  static_cast<std::uint16_t>(surface.width), static_cast<std::uint16_t>(rows), 0,
                  static_cast<std::int16_t>(row), 0, depth, bytesPerRow * static_cast<std::uint32_t>(rows),
                  reinterpret_cast<const std::uint8_t*>(first));
  }
  xcb_free_gc(server, context);
}

}  // namespace hushpane::x11

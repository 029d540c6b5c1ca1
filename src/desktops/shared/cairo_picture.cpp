#include "desktops/shared/cairo_picture.h"

#include <algorithm>
#include <cstring>
#include <numbers>

namespace hushpane::desktops {

namespace {
constexpr int largestSide = 32767;  // pixels; cairo's own limit
}

SurfacePtr surfaceOf(const platform::Image& image) {
  const bool isPicture = image.width > 0 && image.height > 0 && image.width <= largestSide &&
                         image.height <= largestSide &&
                         image.pixels.size() == static_cast<std::size_t>(image.width) * image.height;
  if (!isPicture) return {};
  auto* pixels = const_cast<std::uint32_t*>(image.pixels.data());  // only ever read
  return Cairo::ImageSurface::create(reinterpret_cast<unsigned char*>(pixels), Cairo::Surface::Format::ARGB32,
                                     image.width, image.height, image.width * 4);
}

platform::Image imageOf(const SurfacePtr& surface) {
  surface->flush();
  platform::Image image{surface->get_width(), surface->get_height(), {}};
  image.pixels.resize(static_cast<std::size_t>(image.width) * image.height);
  for (int row = 0; row < image.height; ++row)
    std::memcpy(image.pixels.data() + static_cast<std::size_t>(row) * image.width,
                surface->get_data() + static_cast<std::ptrdiff_t>(row) * surface->get_stride(),
                static_cast<std::size_t>(image.width) * 4);
  return image;
}

void addRoundedRectangle(const ContextPtr& context, const platform::Rect& rect, double radius) {
  constexpr double quarter = std::numbers::pi / 2;
  const double corner = std::min({radius, rect.width / 2, rect.height / 2});
  context->begin_new_sub_path();
  context->arc(rect.right() - corner, rect.y + corner, corner, -quarter, 0);
  context->arc(rect.right() - corner, rect.bottom() - corner, corner, 0, quarter);
  context->arc(rect.x + corner, rect.bottom() - corner, corner, quarter, 2 * quarter);
  context->arc(rect.x + corner, rect.y + corner, corner, 2 * quarter, 3 * quarter);
  context->close_path();
}

}  // namespace hushpane::desktops

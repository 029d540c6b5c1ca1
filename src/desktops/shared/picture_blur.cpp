#include "desktops/shared/picture_blur.h"

#include "desktops/shared/gaussian_blur.h"

namespace hushpane::desktops {

SurfacePtr blurred(const SurfacePtr& surface, double deviation) {
  auto result =
      Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, surface->get_width(), surface->get_height());
  const auto context = Cairo::Context::create(result);
  context->set_source(surface, 0, 0);
  context->paint();
  result->flush();
  gaussianBlur({result->get_data(), result->get_width(), result->get_height(), result->get_stride(), 4}, deviation);
  result->mark_dirty();
  return result;
}

}  // namespace hushpane::desktops

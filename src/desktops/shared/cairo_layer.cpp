#include "desktops/shared/cairo_layer.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "desktops/shared/gaussian_blur.h"

namespace hushpane::desktops {

namespace {

constexpr double farthest = 1e6;  // pixels; no picture is so large

int whole(double pixels) {
  return static_cast<int>(std::clamp(pixels, -farthest, farthest));
}

// How far beyond its drawings a shadow goes at most, its offset left aside.
int reachOf(const platform::Shadow& shadow, double scale) {
  return blurReach(shadow.radius * scale) + 1;
}

bool isSeen(const platform::Shadow& shadow) {
  return shadow.color.alpha > 0 && std::isfinite(shadow.offset.x) && std::isfinite(shadow.offset.y);
}

PixelArea movedBack(const PixelArea& area, const platform::Shadow& shadow, double scale) {
  return area.moved(-whole(std::round(shadow.offset.x * scale)), -whole(std::round(shadow.offset.y * scale)));
}

void blur(const SurfacePtr& surface, double deviation, int bytesPerPixel) {
  surface->flush();
  gaussianBlur({surface->get_data(), surface->get_width(), surface->get_height(), surface->get_stride(), bytesPerPixel},
               deviation);
  surface->mark_dirty();
}

std::uint32_t saturated(std::uint32_t pixel, double saturation) {
  const auto alpha = static_cast<double>(pixel >> 24);
  const auto red = static_cast<double>(pixel >> 16 & 0xff);
  const auto green = static_cast<double>(pixel >> 8 & 0xff);
  const auto blue = static_cast<double>(pixel & 0xff);
  const double grey = 0.2126 * red + 0.7152 * green + 0.0722 * blue;
  const auto channel = [=](double value) {
    return static_cast<std::uint32_t>(std::clamp(grey + (value - grey) * saturation, 0.0, alpha) + 0.5);
  };
  return (pixel & 0xff000000u) | channel(red) << 16 | channel(green) << 8 | channel(blue);
}

void saturate(const SurfacePtr& surface, double saturation) {
  surface->flush();
  for (int row = 0; row < surface->get_height(); ++row) {
    auto* pixels = reinterpret_cast<std::uint32_t*>(surface->get_data() +
                                                    static_cast<std::ptrdiff_t>(row) * surface->get_stride());
    std::for_each(pixels, pixels + surface->get_width(),
                  [saturation](std::uint32_t& pixel) { pixel = saturated(pixel, saturation); });
  }
  surface->mark_dirty();
}

// The group's alpha over another area.
SurfacePtr coverage(const CairoGroup& group, const PixelArea& area) {
  auto result = Cairo::ImageSurface::create(Cairo::Surface::Format::A8, area.width, area.height);
  group.surface->flush();
  const PixelArea common = area.intersection(group.area);
  for (int y = common.y; y < common.y + common.height; ++y) {
    const auto* from =
        reinterpret_cast<const std::uint32_t*>(
            group.surface->get_data() + static_cast<std::ptrdiff_t>(y - group.area.y) * group.surface->get_stride()) +
        (common.x - group.area.x);
    auto* to =
        result->get_data() + static_cast<std::ptrdiff_t>(y - area.y) * result->get_stride() + (common.x - area.x);
    std::transform(from, from + std::max(common.width, 0), to,
                   [](std::uint32_t pixel) { return static_cast<std::uint8_t>(pixel >> 24); });
  }
  result->mark_dirty();
  return result;
}

void paintShadow(const ContextPtr& context, const CairoGroup& group, const platform::Shadow& shadow, double scale) {
  const int reach = reachOf(shadow, scale);
  const auto needed = movedBack(clippedArea(context), shadow, scale).outset(reach);
  const auto area = group.area.outset(reach).intersection(needed);
  if (area.isEmpty()) return;
  const auto mask = coverage(group, area);
  blur(mask, shadow.radius * scale, 1);
  setColor(context, shadow.color);
  context->mask(mask, area.x + shadow.offset.x * scale, area.y + shadow.offset.y * scale);
}

}  // namespace

PixelArea PixelArea::outset(int pixels) const {
  return {x - pixels, y - pixels, width + 2 * pixels, height + 2 * pixels};
}

PixelArea PixelArea::intersection(const PixelArea& other) const {
  const int left = std::max(x, other.x);
  const int top = std::max(y, other.y);
  return {left, top, std::min(x + width, other.x + other.width) - left,
          std::min(y + height, other.y + other.height) - top};
}

PixelArea PixelArea::united(const PixelArea& other) const {
  const int left = std::min(x, other.x);
  const int top = std::min(y, other.y);
  return {left, top, std::max(x + width, other.x + other.width) - left,
          std::max(y + height, other.y + other.height) - top};
}

PixelArea pixelsTouched(const platform::Rect& rect, double scale) {
  // What lies on a pixel's edge but for rounding does not touch the next.
  constexpr double slack = 1e-6;
  const int left = whole(std::floor(rect.x * scale + slack));
  const int top = whole(std::floor(rect.y * scale + slack));
  return {left, top, whole(std::ceil(rect.right() * scale - slack)) - left,
          whole(std::ceil(rect.bottom() * scale - slack)) - top};
}

PixelArea clippedArea(const ContextPtr& context) {
  double left = 0, top = 0, right = 0, bottom = 0;
  context->get_clip_extents(left, top, right, bottom);
  return pixelsTouched({left, top, right - left, bottom - top}, 1);
}

CairoGroup CairoGroup::over(const PixelArea& area) {
  auto surface = Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, area.width, area.height);
  auto context = Cairo::Context::create(surface);
  context->translate(-area.x, -area.y);
  return {surface, context, area};
}

PixelArea layerArea(const platform::LayerEffect& effect, const PixelArea& bounds, const PixelArea& visible,
                    double scale) {
  PixelArea needed = visible;
  for (const auto& shadow : effect.shadows)
    if (isSeen(shadow)) needed = needed.united(movedBack(visible, shadow, scale).outset(reachOf(shadow, scale)));
  const int reach = blurReach(effect.blurRadius * scale);
  return bounds.outset(reach).intersection(needed.outset(reach));
}

void paintGroup(const ContextPtr& context, const CairoGroup& group, const platform::LayerEffect& effect, double scale) {
  if (effect.blurRadius > 0) blur(group.surface, effect.blurRadius * scale, 4);
  if (effect.saturation != 1) saturate(group.surface, effect.saturation);
  const bool fadesTogether = effect.opacity < 1 && !effect.shadows.empty();
  if (fadesTogether) context->push_group();
  for (auto shadow = effect.shadows.rbegin(); shadow != effect.shadows.rend(); ++shadow)
    if (isSeen(*shadow)) paintShadow(context, group, *shadow, scale);
  context->set_source(group.surface, group.area.x, group.area.y);
  context->paint_with_alpha(fadesTogether ? 1 : effect.opacity);
  if (!fadesTogether) return;
  context->pop_group_to_source();
  context->paint_with_alpha(effect.opacity);
}

}  // namespace hushpane::desktops

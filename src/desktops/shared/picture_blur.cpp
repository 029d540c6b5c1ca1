#include "desktops/shared/picture_blur.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace hushpane::desktops {

namespace {

// Three boxes of seven pixels come close to a Gaussian of this deviation. The picture is made small enough for that
// deviation to be the one asked for, which costs far less than wide boxes.
constexpr int boxReach = 3;
constexpr int boxCount = 3;
const double boxDeviation = std::sqrt(12.0);

SurfacePtr scaled(const SurfacePtr& source, int width, int height) {
  auto result = Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, width, height);
  const auto context = Cairo::Context::create(result);
  context->scale(static_cast<double>(width) / source->get_width(), static_cast<double>(height) / source->get_height());
  const auto pattern = Cairo::SurfacePattern::create(source);
  pattern->set_extend(Cairo::Pattern::Extend::PAD);
  pattern->set_filter(Cairo::SurfacePattern::Filter::GOOD);
  context->set_source(pattern);
  context->set_operator(Cairo::Context::Operator::SOURCE);
  context->paint();
  result->flush();
  return result;
}

// Averages one line of pixels, each with `boxReach` neighbours at both sides.
void boxBlurLine(std::uint32_t* first, std::ptrdiff_t step, int count, std::vector<std::uint32_t>& copy) {
  copy.resize(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) copy[static_cast<std::size_t>(i)] = first[i * step];
  const auto at = [&copy, count](int i) { return copy[static_cast<std::size_t>(std::clamp(i, 0, count - 1))]; };
  std::array<std::uint32_t, 4> sums{};
  const auto add = [&sums](std::uint32_t pixel, std::uint32_t sign) {
    for (unsigned channel = 0; channel < 4; ++channel) sums[channel] += sign * ((pixel >> (8 * channel)) & 0xff);
  };
  for (int i = -boxReach; i <= boxReach; ++i) add(at(i), 1);
  constexpr std::uint32_t width = 2 * boxReach + 1;
  for (int i = 0; i < count; ++i) {
    std::uint32_t pixel = 0;
    for (unsigned channel = 0; channel < 4; ++channel) pixel |= ((sums[channel] + width / 2) / width) << (8 * channel);
    first[i * step] = pixel;
    add(at(i + boxReach + 1), 1);
    add(at(i - boxReach), ~0u);
  }
}

void boxBlur(const SurfacePtr& surface) {
  const int width = surface->get_width();
  const int height = surface->get_height();
  const std::ptrdiff_t stride = surface->get_stride() / 4;
  auto* pixels = reinterpret_cast<std::uint32_t*>(surface->get_data());
  std::vector<std::uint32_t> copy;
  for (int pass = 0; pass < boxCount; ++pass) {
    for (int row = 0; row < height; ++row) boxBlurLine(pixels + row * stride, 1, width, copy);
    for (int column = 0; column < width; ++column) boxBlurLine(pixels + column, stride, height, copy);
  }
  surface->mark_dirty();
}

}  // namespace

SurfacePtr blurred(const SurfacePtr& surface, double deviation) {
  const double shrink = std::max(deviation / boxDeviation, 1.0);
  const auto side = [shrink](int pixels) { return std::max(1, static_cast<int>(std::ceil(pixels / shrink))); };
  const auto small = scaled(surface, side(surface->get_width()), side(surface->get_height()));
  boxBlur(small);
  return scaled(small, surface->get_width(), surface->get_height());
}

}  // namespace hushpane::desktops

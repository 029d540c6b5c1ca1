#include "desktops/shared/template_picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "desktops/shared/cairo_canvas.h"

namespace hushpane::desktops {

namespace {

constexpr int largestSide = 1024;  // pixels

platform::Image emptyPicture(int width, int height) {
  return {width, height,
          std::vector<std::uint32_t>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))};
}

std::uint32_t premultiplied(const platform::Color& color, std::uint32_t alpha) {
  const auto channel = [alpha](double value) {
    return static_cast<std::uint32_t>(std::lround(std::clamp(value, 0.0, 1.0) * alpha));
  };
  return alpha << 24 | channel(color.red) << 16 | channel(color.green) << 8 | channel(color.blue);
}

}  // namespace

platform::Image templatePicture(const platform::TemplateImage& image, int side, const platform::Color& color) {
  if (side <= 0) return {};
  auto picture = emptyPicture(std::min(side, largestSide), std::min(side, largestSide));
  const double longest = std::max(image.size.width, image.size.height);
  if (!image.draw || !(longest > 0) || !std::isfinite(longest)) return picture;

  const double scale = picture.width / longest;
  const auto pixels = [scale](double points) { return std::max(1, static_cast<int>(std::lround(points * scale))); };
  auto drawn = emptyPicture(pixels(image.size.width), pixels(image.size.height));
  {
    CairoCanvas canvas(drawn, scale);
    image.draw(canvas, scale);
  }
  const int left = (picture.width - drawn.width) / 2, top = (picture.height - drawn.height) / 2;
  for (int row = 0; row < drawn.height; ++row)
    for (int column = 0; column < drawn.width; ++column)
      picture.pixels[static_cast<std::size_t>((row + top) * picture.width + column + left)] =
          premultiplied(color, drawn.pixels[static_cast<std::size_t>(row * drawn.width + column)] >> 24);
  return picture;
}

}  // namespace hushpane::desktops

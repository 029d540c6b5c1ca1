#include "desktops/shared/template_picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "desktops/shared/cairo_canvas.h"

namespace hushpane::desktops {

namespace {

constexpr int largestSide = 1024;  // pixels
constexpr double rimWidth = 0.05;  // of the side
constexpr double rimStrength = 0.7;

platform::Image emptyPicture(int width, int height) {
  return {width, height,
          std::vector<std::uint32_t>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))};
}

std::uint32_t premultiplied(const platform::Color& color, double alpha) {
  const auto channel = [alpha](double value) {
    return static_cast<std::uint32_t>(std::lround(std::clamp(value, 0.0, 1.0) * alpha * 255));
  };
  return channel(1) << 24 | channel(color.red) << 16 | channel(color.green) << 8 | channel(color.blue);
}

// How much of each pixel the template covers, from 0 to 1, row by row.
struct Coverage {
  int side = 0;
  std::vector<double> parts;

  double at(int column, int row) const {
    if (column < 0 || row < 0 || column >= side || row >= side) return 0;
    return parts[static_cast<std::size_t>(row * side + column)];
  }
};

// As large as it fits a square of so many pixels that leaves some free on each side, and in its middle.
Coverage coverageOf(const platform::TemplateImage& image, int side, int margin) {
  side = std::clamp(side, 0, largestSide);
  Coverage coverage{side, std::vector<double>(static_cast<std::size_t>(side) * static_cast<std::size_t>(side))};
  const double longest = std::max(image.size.width, image.size.height);
  if (side <= 2 * margin || !image.draw || !(longest > 0) || !std::isfinite(longest)) return coverage;

  const double scale = (side - 2 * margin) / longest;
  const auto pixels = [scale](double points) { return std::max(1, static_cast<int>(std::lround(points * scale))); };
  auto drawn = emptyPicture(pixels(image.size.width), pixels(image.size.height));
  {
    CairoCanvas canvas(drawn, scale);
    image.draw(canvas, scale);
  }
  const int left = (side - drawn.width) / 2, top = (side - drawn.height) / 2;
  for (int row = 0; row < drawn.height; ++row)
    for (int column = 0; column < drawn.width; ++column)
      coverage.parts[static_cast<std::size_t>((row + top) * side + column + left)] =
          (drawn.pixels[static_cast<std::size_t>(row * drawn.width + column)] >> 24) / 255.0;
  return coverage;
}

// What a covered pixel lends to the rim of one nearby: less, the farther away it is.
struct Influence {
  int right = 0, down = 0;  // pixels
  double part = 1;
};

std::vector<Influence> influencesOn(int side) {
  const double reach = std::max(1.0, rimWidth * side);
  const int farthest = static_cast<int>(reach) + 1;
  std::vector<Influence> influences;
  for (int down = -farthest; down <= farthest; ++down)
    for (int right = -farthest; right <= farthest; ++right)
      if (const double part = std::min(reach + 1 - std::hypot(right, down), 1.0); part > 0)
        influences.push_back({right, down, part});
  return influences;
}

// One colour over another.
platform::Color blended(const platform::Color& over, double part, const platform::Color& under) {
  const auto channel = [part](double above, double below) { return above * part + below * (1 - part); };
  return {channel(over.red, under.red), channel(over.green, under.green), channel(over.blue, under.blue)};
}

template <class PixelAt>
platform::Image pictureOf(const Coverage& coverage, PixelAt pixelAt) {
  auto picture = emptyPicture(coverage.side, coverage.side);
  for (int row = 0; row < coverage.side; ++row)
    for (int column = 0; column < coverage.side; ++column)
      picture.pixels[static_cast<std::size_t>(row * coverage.side + column)] = pixelAt(column, row);
  return picture;
}

}  // namespace

platform::Image templatePicture(const platform::TemplateImage& image, int side, const platform::Color& color) {
  const auto coverage = coverageOf(image, side, 0);
  return pictureOf(coverage, [&](int column, int row) { return premultiplied(color, coverage.at(column, row)); });
}

platform::Image rimmedTemplatePicture(const platform::TemplateImage& image, int side, const platform::Color& color) {
  const auto coverage = coverageOf(image, side, std::max(1, static_cast<int>(rimWidth * side)));
  const bool isLight = color.red + color.green + color.blue > 1.5;
  const auto rimColor = isLight ? platform::Color{0, 0, 0} : platform::Color{1, 1, 1};
  const auto influences = influencesOn(coverage.side);
  const auto rimAt = [&](int column, int row) {
    double rim = 0;
    for (const auto& [right, down, part] : influences)
      rim = std::max(rim, part * coverage.at(column + right, row + down));
    return rim;
  };
  return pictureOf(coverage, [&](int column, int row) {
    const double ink = coverage.at(column, row);
    const double rim = rimStrength * rimAt(column, row) * (1 - ink);
    const double alpha = ink + rim;
    return alpha > 0 ? premultiplied(blended(color, ink / alpha, rimColor), alpha) : 0;
  });
}

}  // namespace hushpane::desktops

#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "desktops/shared/cairo_canvas.h"

namespace hushpane::desktops {

// A transparent picture to draw on, read by points of the canvas.
struct Painted {
  double scale;
  platform::Image image;

  explicit Painted(double width, double height, double pixelsPerPoint = 1)
      : scale(pixelsPerPoint),
        image{static_cast<int>(std::ceil(width * scale)), static_cast<int>(std::ceil(height * scale)), {}} {
    image.pixels.resize(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
  }

  template <class Draw>
  Painted& draw(Draw drawing) {
    CairoCanvas canvas(image, scale);
    drawing(canvas);
    return *this;
  }

  std::uint32_t pixel(int x, int y) const {
    return image
        .pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) + static_cast<std::size_t>(x)];
  }
  std::uint32_t at(double x, double y) const { return pixel(static_cast<int>(x * scale), static_cast<int>(y * scale)); }
  int alphaAt(double x, double y) const { return static_cast<int>(at(x, y) >> 24); }

  // The smallest rectangle, in pixels, around all that is drawn.
  platform::Rect ink() const {
    int left = image.width, top = image.height, right = 0, bottom = 0;
    for (int y = 0; y < image.height; ++y)
      for (int x = 0; x < image.width; ++x) {
        if (pixel(x, y) >> 24 < 24) continue;
        left = std::min(left, x);
        top = std::min(top, y);
        right = std::max(right, x + 1);
        bottom = std::max(bottom, y + 1);
      }
    return {static_cast<double>(left), static_cast<double>(top), static_cast<double>(right - left),
            static_cast<double>(bottom - top)};
  }
};

}  // namespace hushpane::desktops

#pragma once

#include <cstdint>

namespace hushpane::desktops {

struct PixelSize {
  int width = 0;
  int height = 0;

  std::int64_t area() const { return std::int64_t{width} * height; }
  PixelSize turned() const { return {height, width}; }
  bool operator==(const PixelSize&) const = default;
};

}  // namespace hushpane::desktops

#pragma once

#include <vector>

#include "desktops/shared/gaussian_blur.h"

namespace hushpane::desktops {

// Pixels of its own, without padding between the rows.
class PixelGrid {
 public:
  PixelGrid(int width, int height, int bytesPerPixel)
      : bytes_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
               static_cast<std::size_t>(bytesPerPixel)),
        width_(width),
        height_(height),
        bytesPerPixel_(bytesPerPixel) {}

  PixelBytes pixels() {
    return {bytes_.data(), width_, height_, static_cast<std::ptrdiff_t>(width_) * bytesPerPixel_, bytesPerPixel_};
  }

 private:
  std::vector<std::uint8_t> bytes_;
  int width_;
  int height_;
  int bytesPerPixel_;
};

// Each pixel the mean of a square of `factor` times `factor` pixels; what a square at the edge lacks goes on as at the
// edge.
PixelGrid shrunk(const PixelBytes& pixels, int factor);

// The other way, into all of `pixels`: interpolated between the centres of the squares.
void expand(const PixelBytes& small, int factor, const PixelBytes& pixels);

}  // namespace hushpane::desktops

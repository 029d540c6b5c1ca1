#pragma once

#include <cstddef>
#include <cstdint>

namespace hushpane::desktops {

// Pixels of one or four bytes, row by row.
struct PixelBytes {
  std::uint8_t* first = nullptr;
  int width = 0;   // pixels
  int height = 0;  // rows
  std::ptrdiff_t stride = 0;
  int bytesPerPixel = 1;
};

// How far, in pixels, a blur of that standard deviation reaches.
int blurReach(double deviation);

// Spreads every pixel by nearly a Gaussian of that standard deviation (pixels), in place. Beyond the edges the picture
// goes on as at the edge.
void gaussianBlur(const PixelBytes& pixels, double deviation);

}  // namespace hushpane::desktops

#include "desktops/shared/gaussian_blur.h"

#include <algorithm>
#include <cmath>

#include "desktops/shared/box_blur.h"
#include "desktops/shared/pixel_grid.h"

namespace hushpane::desktops {

namespace {

constexpr double leastDeviation = 0.05;  // pixels; less changes nothing
constexpr double largestDeviation = 200;
// A wider blur leaves no detail of this size (pixels, in standard deviations), so that it is computed on a smaller
// picture.
constexpr double deviationLeft = 2;

bool blurs(double deviation) {
  return std::isfinite(deviation) && deviation > leastDeviation;
}

int shrinkFor(double deviation) {
  const double shrink = deviation / deviationLeft;
  return shrink < 2 ? 1 : static_cast<int>(shrink);
}

// What is left to do on the small picture: averaging squares and interpolating between them spread the pixels, too.
double deviationAfter(double deviation, int shrink) {
  const double averaging = (shrink * shrink - 1) / 12.0;
  const double interpolating = shrink * shrink / 6.0;
  return std::sqrt(deviation * deviation - averaging - interpolating) / shrink;
}

}  // namespace

int blurReach(double deviation) {
  if (!blurs(deviation)) return 0;
  return static_cast<int>(std::ceil(3 * std::min(deviation, largestDeviation))) + 3;
}

void gaussianBlur(const PixelBytes& pixels, double deviation) {
  if (!blurs(deviation) || pixels.width <= 0 || pixels.height <= 0) return;
  deviation = std::min(deviation, largestDeviation);
  const int shrink = shrinkFor(deviation);
  if (shrink == 1) return boxBlur(pixels, deviation);
  auto small = shrunk(pixels, shrink);
  boxBlur(small.pixels(), deviationAfter(deviation, shrink));
  expand(small.pixels(), shrink, pixels);
}

}  // namespace hushpane::desktops

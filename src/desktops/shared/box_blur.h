#pragma once

#include "desktops/shared/gaussian_blur.h"

namespace hushpane::desktops {

// The widest blur, as a standard deviation in pixels, that the sums of boxBlur() hold.
inline constexpr double widestBoxBlur = 7;

// Three boxes one after another, with their outermost pixels weighted so that the deviation is exact, come close to a
// Gaussian.
void boxBlur(const PixelBytes& pixels, double deviation);

}  // namespace hushpane::desktops

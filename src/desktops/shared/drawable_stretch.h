#pragma once

namespace hushpane::desktops {

// Where a place of a target reads a drawable, in one direction: at scale * place + offset. Places count in pixels from
// the edge, so that the first pixel's centre is 0.5.
struct DrawableStretch {
  double scale = 0;
  double offset = 0.5;
};

// A drawable of `samples` pixels lies over `length` pixels of the screen with the centres of its outermost pixels on
// the centres of theirs. `target` pixels stand for these `length` pixels.
constexpr DrawableStretch drawableStretch(int samples, double length, double target) {
  if (samples < 2 || length <= 1) return {};
  const double samplesPerPixel = (samples - 1) / (length - 1);
  return {samplesPerPixel * length / target, 0.5 - 0.5 * samplesPerPixel};
}

}  // namespace hushpane::desktops

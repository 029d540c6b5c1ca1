#include "platform/animation.h"

#include <algorithm>

namespace hushpane::platform {

namespace {

// One coordinate of a cubic Bézier from 0 to 1 with the control values `first` and `second`.
double bezier(double first, double second, double parameter) {
  const double rest = 1 - parameter;
  return 3 * rest * rest * parameter * first + 3 * rest * parameter * parameter * second +
         parameter * parameter * parameter;
}

// The curve's height where its horizontal coordinate is `fraction`; the horizontal coordinate never falls, so halving
// finds it.
double bezierAt(double firstX, double secondX, double firstY, double secondY, double fraction) {
  double low = 0;
  double high = 1;
  for (int step = 0; step < 32; ++step) {
    const double middle = (low + high) / 2;
    (bezier(firstX, secondX, middle) < fraction ? low : high) = middle;
  }
  return bezier(firstY, secondY, (low + high) / 2);
}

}  // namespace

double evaluate(TimingFunction timing, double fraction) {
  if (!(fraction > 0)) return 0;
  if (fraction >= 1) return 1;
  switch (timing) {
    case TimingFunction::linear: return fraction;
    case TimingFunction::easeIn: return bezierAt(0.42, 1, 0, 1, fraction);
    case TimingFunction::easeOut: return bezierAt(0, 0.58, 0, 1, fraction);
    case TimingFunction::easeInEaseOut: return bezierAt(0.42, 0.58, 0, 1, fraction);
  }
  return fraction;
}

}  // namespace hushpane::platform

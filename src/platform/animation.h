#pragma once

namespace hushpane::platform {

enum class TimingFunction { linear, easeIn, easeOut, easeInEaseOut };

// The part of the way covered after `fraction` of the time, both in [0, 1]; other fractions count as the nearer end.
// The curves are cubic Béziers from (0, 0) to (1, 1): easeIn through (0.42, 0) and (1, 1), easeOut through (0, 0) and
// (0.58, 1), easeInEaseOut through (0.42, 0) and (0.58, 1).
double evaluate(TimingFunction timing, double fraction);

constexpr double interpolate(double from, double to, double fraction) {
  return from + (to - from) * fraction;
}

struct Animation {
  double duration = 0;  // seconds
  TimingFunction timing = TimingFunction::easeOut;
};

}  // namespace hushpane::platform

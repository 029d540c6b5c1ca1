#pragma once

namespace hushpane::platform {

// A colour in sRGB with straight (not premultiplied) alpha; every channel in [0, 1].
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
  bool operator==(const Color&) const = default;
};

inline constexpr Color black{0, 0, 0, 1};

// The colour on the straight line from `from` (fraction 0) to `to` (fraction 1).
constexpr Color interpolate(const Color& from, const Color& to, double fraction) {
  const auto mix = [fraction](double a, double b) { return a + (b - a) * fraction; };
  return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue), mix(from.alpha, to.alpha)};
}

}  // namespace hushpane::platform

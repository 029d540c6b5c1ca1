#include "desktops/shared/fluid_gradient_formula.h"

#include <algorithm>
#include <cmath>

namespace hushpane::desktops {

namespace {

using platform::Color;
using platform::FluidUniforms;

double fract(double value) {
  return value - std::floor(value);
}

double smoothstep(double start, double end, double value) {
  const double part = std::clamp((value - start) / (end - start), 0.0, 1.0);
  return part * part * (3 - 2 * part);
}

// All in [0, 1]; opaque.
Color hsv2rgb(double hue, double saturation, double value) {
  const auto channel = [&](double offset) {
    const double pure = std::clamp(std::abs(std::fmod(hue * 6 + offset, 6.0) - 3) - 1, 0.0, 1.0);
    return value * std::lerp(1.0, pure, saturation);
  };
  return {channel(0), channel(4), channel(2), 1};
}

}  // namespace

FluidEnds fluidEnds(const FluidUniforms& uniforms) {
  FluidEnds ends{hsv2rgb(uniforms.hue, 0.70, 0.95), hsv2rgb(fract(uniforms.hue + 0.28), 0.75, 0.65)};
  ends.first.alpha = fluidWeakestTint;
  ends.second.alpha = uniforms.alpha;
  return ends;
}

Color fluidGradient(const FluidUniforms& uniforms, GradientPlace place) {
  // In doubles: after some days a float no longer tells the phases well enough.
  const double drift = uniforms.time * fluidPace;
  double sum = 0;
  for (const auto& wave : fluidWaves) sum += std::sin(place.x * wave.x + place.y * wave.y + drift * wave.rate);
  constexpr double highest = fluidWaves.size();
  const double turn = smoothstep(fluidTurnStart, fluidTurnEnd, (sum + highest) / (2 * highest));

  const double dx = place.x - 0.5, dy = place.y - 0.5;
  const double vignette = std::clamp(1 - (dx * dx + dy * dy) * fluidVignette, fluidLeastVignette, 1.0);

  const auto ends = fluidEnds(uniforms);
  auto color = interpolate(ends.first, ends.second, turn);
  color.alpha *= vignette;
  return color;
}

}  // namespace hushpane::desktops

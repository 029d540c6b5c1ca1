#pragma once

#include <array>

#include "platform/color.h"
#include "platform/gpu_device.h"

namespace hushpane::desktops {

// Across a drawable and up it: (0, 0) is its lower left corner, (1, 1) its upper right one.
struct GradientPlace {
  double x = 0;
  double y = 0;
};

// One of the plane waves whose sum is the pattern: sin(x * place.x + y * place.y + rate * the drift).
struct FluidWave {
  double x;
  double y;
  double rate;
};
inline constexpr std::array<FluidWave, 4> fluidWaves{
    {{2.1, 0.6, 1}, {0.7, -2.3, 0.71}, {1.6, 1.6, 0.87}, {1.5, -1.1, 0.53}}};

// The drift in one second.
inline constexpr double fluidPace = 0.055;

// Where the sum of the waves, brought to [0, 1], begins and ends to turn from one colour to the other.
inline constexpr double fluidTurnStart = 0.15;
inline constexpr double fluidTurnEnd = 0.85;

inline constexpr double fluidWeakestTint = 0.50;

// How much of the tint is lost at a unit's distance from the centre. (The corners keep more than the least.)
inline constexpr double fluidVignette = 0.55;
inline constexpr double fluidLeastVignette = 0.18;

// The two colours at the ends of the turn, with the tint that belongs to each as alpha.
struct FluidEnds {
  platform::Color first;
  platform::Color second;
};
FluidEnds fluidEnds(const platform::FluidUniforms& uniforms);

// The fluid gradient, place by place: four long plane waves in different directions, drifting at different paces,
// decide how far a place is turned from the colour of the given hue to a darker one about a quarter of the circle
// further. The tint breathes with the waves and grows thinner towards the corners. This is what every renderer is held
// against; it is far too slow to draw with.
platform::Color fluidGradient(const platform::FluidUniforms& uniforms, GradientPlace place);

}  // namespace hushpane::desktops

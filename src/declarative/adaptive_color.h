#pragma once

#include <variant>

#include "platform/canvas.h"
#include "platform/color.h"

namespace hushpane::declarative {

enum class Appearance { light, dark };

// A colour that follows the appearance of the desktop.
struct AdaptiveColor {
  platform::Color light;
  platform::Color dark;

  bool operator==(const AdaptiveColor&) const = default;
  const platform::Color& in(Appearance appearance) const { return appearance == Appearance::dark ? dark : light; }

  // The same with its alpha multiplied.
  constexpr AdaptiveColor opacity(double factor) const {
    AdaptiveColor faded = *this;
    faded.light.alpha *= factor;
    faded.dark.alpha *= factor;
    return faded;
  }
};

// The same in both appearances.
constexpr AdaptiveColor fixed(platform::Color color) {
  return {color, color};
}

// Texts and what belongs to them, from the most to the least important.
inline constexpr AdaptiveColor primary{{0, 0, 0, 0.85}, {1, 1, 1, 0.85}};
inline constexpr AdaptiveColor secondary{{0, 0, 0, 0.5}, {1, 1, 1, 0.55}};
inline constexpr AdaptiveColor tertiary{{0, 0, 0, 0.26}, {1, 1, 1, 0.25}};
inline constexpr AdaptiveColor separator{{0, 0, 0, 0.1}, {1, 1, 1, 0.1}};
inline constexpr AdaptiveColor clear = fixed({0, 0, 0, 0});
inline constexpr AdaptiveColor white = fixed({1, 1, 1, 1});
inline constexpr AdaptiveColor opaqueBlack = fixed({0, 0, 0, 1});

inline constexpr AdaptiveColor systemBlue{{0, 0.478, 1, 1}, {0.04, 0.52, 1, 1}};

inline constexpr AdaptiveColor windowBackground{{0.925, 0.925, 0.925, 1}, {0.196, 0.196, 0.196, 1}};

// A point of a rectangle: (0, 0) is top-leading, (1, 1) bottom-trailing.
struct UnitPoint {
  double x = 0.5;
  double y = 0.5;
  bool operator==(const UnitPoint&) const = default;
};

namespace unit {
inline constexpr UnitPoint center{0.5, 0.5};
inline constexpr UnitPoint top{0.5, 0};
inline constexpr UnitPoint topLeading{0, 0};
inline constexpr UnitPoint topTrailing{1, 0};
inline constexpr UnitPoint bottomTrailing{1, 1};
}  // namespace unit

struct AdaptiveGradient {
  AdaptiveColor startColor;
  AdaptiveColor endColor;
  UnitPoint start;
  UnitPoint end;
  bool operator==(const AdaptiveGradient&) const = default;
};

using AdaptivePaint = std::variant<AdaptiveColor, AdaptiveGradient>;

struct AdaptiveShadow {
  AdaptiveColor color;
  double radius = 0;  // standard deviation of the Gaussian, in points
  platform::Point offset;
  bool operator==(const AdaptiveShadow&) const = default;
};

}  // namespace hushpane::declarative

#pragma once

#include "desktops/shared/look.h"
#include "tests/x11/pixel.h"

namespace hushpane::x11_tests {

// One colour beneath the blurring material.
inline Pixel tinted(Pixel pixel) {
  static constexpr platform::Color tint = desktops::darkHud::tint;
  const auto blend = [](int channel, double with) {
    return static_cast<std::uint32_t>(channel * (1 - tint.alpha) + 255 * with * tint.alpha + 0.5);
  };
  return {blend(pixel.red(), tint.red) << 16 | blend(pixel.green(), tint.green) << 8 | blend(pixel.blue(), tint.blue)};
}

}  // namespace hushpane::x11_tests

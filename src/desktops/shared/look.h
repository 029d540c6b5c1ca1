#pragma once

#include "platform/color.h"

namespace hushpane::desktops {

// What an effect material looks like, the same on every desktop.
namespace darkHud {
// About how far, in points, the light of one spot behind the window spreads: two standard deviations of a Gaussian.
inline constexpr double blurRadius = 30;
// Laid over the blurred picture.
inline constexpr platform::Color tint{0.05, 0.055, 0.07, 0.38};
}  // namespace darkHud

}  // namespace hushpane::desktops

#pragma once

#include <optional>

#include "platform/image.h"

namespace hushpane {

// The sides of the picture that the hue is computed from, in pixels.
inline constexpr int accentHueSide = 40;

// The hue, in [0, 1), of a picture's mean colour with its saturation boosted: what the animated gradient takes on from
// the desktop picture. Nothing when the mean is too close to grey to carry a hue, or there is no pixel.
std::optional<float> accentHue(const platform::Image& picture);

}  // namespace hushpane

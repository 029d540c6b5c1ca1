#pragma once

#include "declarative/adaptive_color.h"

namespace hushpane {

// The highlight colour of all pages.
inline constexpr declarative::AdaptiveColor globalAccent{{0.36, 0.55, 0.50, 1}, {0.46, 0.65, 0.60, 1}};

}  // namespace hushpane

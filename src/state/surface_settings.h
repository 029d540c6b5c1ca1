#pragma once

#include <array>
#include <string_view>

#include "state/raw_text.h"

namespace hushpane {

enum class SurfaceType { blur, dim, wallpaper };
enum class DimIntensity { subtle, balanced, strong };
enum class WallpaperSource { standard, custom };

template <>
inline constexpr std::array<std::string_view, 3> rawTexts<SurfaceType>{"blur", "dim", "wallpaper"};
template <>
inline constexpr std::array<std::string_view, 3> rawTexts<DimIntensity>{"subtle", "balanced", "strong"};
template <>
inline constexpr std::array<std::string_view, 2> rawTexts<WallpaperSource>{"default", "custom"};

}  // namespace hushpane

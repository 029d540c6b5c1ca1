#pragma once

#include <string_view>

// Every key under which the program stores something, named once.
namespace hushpane::storedKeys {

// Standard defaults.
inline constexpr std::string_view revealModifier = "hushpane.revealModifier";
inline constexpr std::string_view applyToAllDisplays = "hushpane.applyToAllDisplays";
inline constexpr std::string_view ambientSurface = "hushpane.ambientSurface";
inline constexpr std::string_view ambientGradientEnabled = "hushpane.ambientGradientEnabled";
inline constexpr std::string_view ambientDimIntensity = "hushpane.ambientDimIntensity";
inline constexpr std::string_view ambientWallpaperSource = "hushpane.ambientWallpaperSource";
inline constexpr std::string_view focusSurface = "hushpane.focusSurface";
inline constexpr std::string_view focusDimIntensity = "hushpane.focusDimIntensity";
inline constexpr std::string_view focusWallpaperSource = "hushpane.focusWallpaperSource";
inline constexpr std::string_view customWallpaperBookmarkData = "hushpane.customWallpaperBookmarkData";
inline constexpr std::string_view mouseShakeEnabled = "hushpane.mouseShakeEnabled";
inline constexpr std::string_view lastUserMode = "hushpane.lastUserMode";
inline constexpr std::string_view displayEnablement = "hushpane.displayEnablement";
inline constexpr std::string_view reviewSwitchCount = "hushpane.reviewSwitchCount";
inline constexpr std::string_view reviewSessionCount = "hushpane.reviewSessionCount";
inline constexpr std::string_view firstUseDate = "hushpane.firstUseDate";
inline constexpr std::string_view lastReviewPromptDate = "hushpane.lastReviewPromptDate";
inline constexpr std::string_view shortcuts = "hushpane.shortcuts.v3";
inline constexpr std::string_view hasSeenWelcome = "hasSeenWelcome";
// The languages that the desktop's own libraries are to start in.
inline constexpr std::string_view appleLanguages = "AppleLanguages";

// Shared with the widget.
inline constexpr std::string_view userMode = "hushpane.userMode";
// Also in the standard defaults: the choice there, the language in use here.
inline constexpr std::string_view language = "hushpane.language";

}  // namespace hushpane::storedKeys

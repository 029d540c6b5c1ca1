#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "state/raw_text.h"

namespace hushpane {

// What the user wants the screen to look like.
enum class VeilMode {
  standard,      // desktop as usual
  cleanDesktop,  // the desktop is covered, beneath every window
  focus,         // everything but the frontmost application's window is covered
  reveal,        // all covers lifted while the reveal modifier is held; never chosen, stored or restored
};

template <>
inline constexpr std::array<std::string_view, 4> rawTexts<VeilMode>{"standard", "cleanDesktop", "focus", "reveal"};

inline constexpr std::array allCases{VeilMode::standard, VeilMode::cleanDesktop, VeilMode::focus, VeilMode::reveal};

// The modes that a user can choose and that may be stored.
inline constexpr std::array userModes{VeilMode::standard, VeilMode::cleanDesktop, VeilMode::focus};

constexpr bool isUserMode(VeilMode mode) {
  return std::find(userModes.begin(), userModes.end(), mode) != userModes.end();
}

}  // namespace hushpane

#pragma once

#include "tests/x11/window_manager.h"

namespace hushpane::x11_tests {

// A window manager in one of the ways people run it.
struct Combination {
  std::string name;
  WindowManagerKind windowManager;
  bool runsPicom = false;
  // Has the picture of the desktop in a window, as file managers do, and little works without.
  bool needsDesktopWindow = false;
  // Whether any compositor runs from the start, and whether one can be started and ended.
  bool isComposited = false;
  bool canSwitchCompositor = true;
};

const std::vector<Combination>& combinations();

inline std::ostream& operator<<(std::ostream& stream, const Combination& combination) {
  return stream << combination.name;
}

}  // namespace hushpane::x11_tests

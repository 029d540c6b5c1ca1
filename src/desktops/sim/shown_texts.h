#pragma once

#include <string>
#include <vector>

#include "desktops/sim/sim_panels.h"

namespace hushpane::sim {

struct ShownText {
  std::string text;
  platform::Rect frame;  // points of the desktop
};

// Every text that a panel draws now, from back to front.
std::vector<ShownText> shownTexts(const SimPanel& panel);
// That text on the panel in front that shows it; nothing when none does.
std::optional<ShownText> findText(const SimPanels& panels, const std::string& text);

}  // namespace hushpane::sim

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "desktops/sim/sim_panels.h"

namespace hushpane::sim {

struct ShownText {
  std::string text;
  platform::Rect frame;      // points, from where it was asked for
  bool isShortened = false;  // cut, or smaller than it should be
};

// Every text that `paint` draws, from back to front; its canvas begins at `origin`.
std::vector<ShownText> textsOf(const std::function<void(platform::Canvas&)>& paint, platform::Point origin = {});

// Every text that a panel draws now, from back to front.
std::vector<ShownText> shownTexts(const SimPanel& panel);
// That text on the panel in front that shows it; nothing when none does.
std::optional<ShownText> findText(const SimPanels& panels, const std::string& text);

}  // namespace hushpane::sim

#include "desktops/sim/sim_panels.h"

#include <algorithm>

namespace hushpane::sim {

SimPanel::SimPanel(SimPanels& panels, platform::Animator& animator, const platform::PanelConfiguration& configuration,
                   platform::PanelContents& contents)
    : platform::Panel(animator, configuration, contents), panels_(panels) {}

SimPanel::~SimPanel() {
  orderOut();
}

void SimPanel::orderChanged() {
  panels_.orderChanged(*this);
}

std::unique_ptr<platform::Panel> SimPanels::makePanel(const platform::PanelConfiguration& configuration,
                                                      platform::PanelContents& contents) {
  return std::make_unique<SimPanel>(*this, animator_, configuration, contents);
}

SimPanel* SimPanels::at(platform::Point point) const {
  const auto found = std::ranges::find_if(shown_, [point](const auto* panel) { return panel->isMetAt(point); });
  return found == shown_.end() ? nullptr : *found;
}

SimPanel* SimPanels::keyPanel() const {
  const auto found =
      std::ranges::find_if(shown_, [](const auto* panel) { return panel->configuration().takesKeyboard; });
  return found == shown_.end() ? nullptr : *found;
}

void SimPanels::orderChanged(SimPanel& panel) {
  std::erase(shown_, &panel);
  if (panel.isVisible()) shown_.insert(shown_.begin(), &panel);
}

}  // namespace hushpane::sim

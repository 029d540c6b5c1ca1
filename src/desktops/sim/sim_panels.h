#pragma once

#include <memory>
#include <vector>

#include "platform/panel.h"

namespace hushpane::sim {

class SimPanels;

class SimPanel : public platform::Panel {
 public:
  SimPanel(SimPanels& panels, platform::Animator& animator, const platform::PanelConfiguration& configuration,
           platform::PanelContents& contents);
  ~SimPanel() override;

  // Nothing is kept of what was drawn.
  void setNeedsDisplay(const platform::Rect&) override { ++displayRequests_; }
  int displayRequests() const { return displayRequests_; }

 protected:
  void frameChanged() override {}
  void outlineChanged() override {}
  void alphaChanged() override {}
  void orderChanged() override;

 private:
  SimPanels& panels_;
  int displayRequests_ = 0;
};

// The program's panels, always in front of all windows.
class SimPanels : public platform::Panels {
 public:
  explicit SimPanels(platform::Animator& animator) : animator_(animator) {}

  std::unique_ptr<platform::Panel> makePanel(const platform::PanelConfiguration& configuration,
                                             platform::PanelContents& contents) override;

  // Those that are shown, from front to back.
  const std::vector<SimPanel*>& shown() const { return shown_; }
  // The one in front that the pointer meets there; null when there is none.
  SimPanel* at(platform::Point point) const;
  // The one that gets keys; null when there is none.
  SimPanel* keyPanel() const;

 private:
  friend SimPanel;
  void orderChanged(SimPanel& panel);

  platform::Animator& animator_;
  std::vector<SimPanel*> shown_;
};

}  // namespace hushpane::sim

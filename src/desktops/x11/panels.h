#pragma once

#include <memory>

#include "platform/panel.h"

namespace hushpane::x11 {

// Makes the program's panels.
class Panels : public platform::Panels {
 public:
  explicit Panels(platform::Animator& animator) : animator_(animator) {}

  std::unique_ptr<platform::Panel> makePanel(const platform::PanelConfiguration& configuration,
                                             platform::PanelContents& contents) override;

 private:
  platform::Animator& animator_;
};

}  // namespace hushpane::x11

#pragma once

#include <memory>

#include "desktops/x11/panel_keyboard.h"
#include "desktops/x11/x11_panel.h"
#include "platform/panel.h"

namespace hushpane::x11 {

// Makes the program's panels.
class Panels : public platform::Panels {
 public:
  Panels(platform::Animator& animator, Connection& connection, platform::MainQueue& queue, TurnEnd& turnEnd,
         Render& render, Screens& screens, CompositorWatch& compositor, EventMonitors& monitors, WindowTree& tree)
      : animator_(animator), keyboard_(connection, queue), services_{connection, queue,    turnEnd, render,   screens,
                                                                     compositor, monitors, tree,    keyboard_} {}

  std::unique_ptr<platform::Panel> makePanel(const platform::PanelConfiguration& configuration,
                                             platform::PanelContents& contents) override {
    return std::make_unique<X11Panel>(animator_, configuration, contents, services_);
  }

 private:
  platform::Animator& animator_;
  PanelKeyboard keyboard_;
  PanelServices services_;
};

}  // namespace hushpane::x11

#pragma once

#include <string>

#include "app/tooltip_controller.h"
#include "platform/lifetime.h"
#include "platform/platform.h"
#include "state/state_controller.h"

namespace hushpane {

// Keeps the program's icon and its tooltip in step with the mode, the reveal key and the language. Where the desktop
// shows no tooltips of icons, it does so itself.
class MenuBarItem {
 public:
  explicit MenuBarItem(platform::Platform& platform);

  // From the moment on when the pointer came over the icon.
  void showToolTip() { tooltip_.pointerOnIcon(toolTipText_); }
  void hideToolTip() { tooltip_.hide(); }

 private:
  void update();

  platform::Platform& platform_;
  TooltipController tooltip_;
  std::string toolTipText_;
  bool isUpdateQueued_ = false;
  platform::Token state_;
  platform::Token language_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane

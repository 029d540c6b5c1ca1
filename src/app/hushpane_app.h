#pragma once

#include "app/app_delegate.h"
#include "app/menu_bar_item.h"
#include "app/panel_controller.h"
#include "platform/platform.h"

namespace hushpane {

// The program as a whole on one desktop.
class HushpaneApp {
 public:
  explicit HushpaneApp(platform::Platform& platform);

  // Starts the program on the desktop, which owns it from then on.
  static void launch(platform::Platform& platform);

 private:
  AppDelegate appDelegate_;
  MenuBarItem menuBarItem_;
  PanelController panel_;
};

}  // namespace hushpane

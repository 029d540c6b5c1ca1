#pragma once

#include "app/app_delegate.h"
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
};

}  // namespace hushpane

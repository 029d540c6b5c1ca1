#pragma once

#include "platform/lifetime.h"
#include "platform/platform.h"
#include "state/state_controller.h"

namespace hushpane {

// Keeps the program's icon and its tooltip in step with the mode, the reveal key and the language.
class MenuBarItem {
 public:
  explicit MenuBarItem(platform::Platform& platform);

 private:
  void update();

  platform::Platform& platform_;
  bool isUpdateQueued_ = false;
  platform::Token state_;
  platform::Token language_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane

#pragma once

#include <memory>

#include "app/page_window.h"
#include "platform/lifetime.h"
#include "platform/platform.h"

namespace hushpane {

// Points at the program's icon with a small bubble that lets clicks through and goes away by itself, or at the first
// click anywhere. Without an icon, or where the desktop does not tell its place, nothing is shown.
class MenuBarHintWindowController {
 public:
  static constexpr platform::Size panelSize{186, 75};  // points
  static constexpr double lifeTime = 10;               // seconds

  static MenuBarHintWindowController& shared();
  explicit MenuBarHintWindowController(platform::Platform& platform) : platform_(platform) {}

  void show();
  // Does nothing while nothing is shown.
  void dismiss();
  bool isShown() const { return window_ != nullptr; }

 private:
  platform::Platform& platform_;
  std::unique_ptr<PageWindow> window_;
  std::unique_ptr<PageWindow> leaving_;  // fades out
  platform::WorkItem dismissTimer_;
  platform::Token globalClickMonitor_;
  platform::Token localClickMonitor_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane

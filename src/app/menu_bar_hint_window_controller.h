#pragma once

#include <memory>
#include <optional>

#include "app/page_window.h"
#include "platform/lifetime.h"
#include "platform/platform.h"

namespace hushpane {

// Points at the program's icon with a small bubble that lets clicks through and goes away by itself, or at the first
// click anywhere. A desktop may take a while to put an icon into its place, so the bubble comes when the icon has stood
// still; where the desktop does not tell the place, it points at the corner of the bar. Without an icon nothing is
// shown.
class MenuBarHintWindowController {
 public:
  static constexpr platform::Size panelSize{186, 75};  // points
  static constexpr double lifeTime = 10;               // seconds
  static constexpr double stillness = 0.5;             // seconds for which the icon stands still before
  static constexpr double patience = 5;                // seconds after which it comes anyway, or not at all

  static MenuBarHintWindowController& shared();
  explicit MenuBarHintWindowController(platform::Platform& platform) : platform_(platform) {}

  void show();
  // Does nothing while nothing is shown or to be shown.
  void dismiss();
  bool isShown() const { return window_ != nullptr; }

 private:
  // Where the icon is seen to be.
  struct Sighting {
    bool isShown = false;
    std::optional<platform::Rect> frame;
    bool operator==(const Sighting&) const = default;
  };
  void look();
  void appear();
  void watchClicks();

  platform::Platform& platform_;
  Sighting seen_;
  double seenSince_ = 0, lookedSince_ = 0;  // on the main queue's clock
  platform::WorkItem nextLook_;
  std::unique_ptr<PageWindow> window_;
  std::unique_ptr<PageWindow> leaving_;  // fades out
  platform::WorkItem dismissTimer_;
  platform::Token globalClickMonitor_;
  platform::Token localClickMonitor_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane

#pragma once

#include <functional>
#include <optional>

#include "desktops/session/dbus_notification_center.h"
#include "desktops/session/dbus_session.h"
#include "platform/main_queue.h"
#include "widget/shared_file_watch.h"
#include "widget/shared_mode.h"

namespace hushpane::widget {

// Shows the shared mode at once, then whenever the program asks its widgets to draw again, and, should nobody ask soon,
// when another mode was stored. Runs from the main loop.
class ModeFollower {
 public:
  using Show = std::function<void(VeilMode)>;

  ModeFollower(const SharedMode& mode, platform::MainQueue& queue, Show show);

 private:
  // The way on which the program asks.
  struct Bus {
    Bus(platform::MainQueue& queue, std::function<void()> reload);

    session::DbusSession session;
    session::DbusNotificationCenter center;
    platform::Token reloads;
  };

  void show();
  void fileChanged();

  const SharedMode& mode_;
  platform::MainQueue& queue_;
  Show show_;
  VeilMode shown_ = VeilMode::standard;
  std::optional<SharedFileWatch> watch_;
  platform::WorkItem unasked_;
  std::optional<Bus> bus_;
};

}  // namespace hushpane::widget

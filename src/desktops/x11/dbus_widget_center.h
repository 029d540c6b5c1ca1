#pragma once

#include "desktops/x11/dbus_session.h"
#include "platform/widget_center.h"

namespace hushpane::x11 {

// Widgets listen for a signal on the session bus.
class DbusWidgetCenter : public platform::WidgetCenter {
 public:
  explicit DbusWidgetCenter(DbusSession& session) : session_(session) {}
  void reloadAllTimelines() override { session_.emitSignal("reloadAllTimelines"); }

 private:
  DbusSession& session_;
};

}  // namespace hushpane::x11

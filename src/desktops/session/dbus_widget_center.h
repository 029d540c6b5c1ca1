#pragma once

#include "desktops/session/dbus_session.h"
#include "platform/widget_center.h"

namespace hushpane::session {

// Widgets listen for a signal on the session bus.
class DbusWidgetCenter : public platform::WidgetCenter {
 public:
  explicit DbusWidgetCenter(DbusSession& session) : session_(session) {}
  void reloadAllTimelines() override { session_.emitSignal("reloadAllTimelines"); }

 private:
  DbusSession& session_;
};

}  // namespace hushpane::session

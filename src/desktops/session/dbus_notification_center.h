#pragma once

#include <functional>
#include <map>
#include <string>

#include "desktops/session/dbus_session.h"
#include "platform/notification_center.h"

namespace hushpane::session {

// Notifications among the user's processes: com.corvane.Hushpane.NAME is the signal NAME of the program's interface,
// whatever arguments it has. The bus hands a signal to its sender too, so observers here hear of it once. Without a
// bus, and under any other name, notifications stay in the process. Observers always run from the main loop.
class DbusNotificationCenter : public platform::NotificationCenter {
 public:
  DbusNotificationCenter(DbusSession& session, platform::MainQueue& queue);
  ~DbusNotificationCenter() override;

  platform::Token addObserver(std::string_view name, std::function<void()> handler) override;
  void post(std::string_view name) override;

 private:
  void subscribe(const std::string& name);
  void subscribeAgain();

  DbusSession& session_;
  platform::MainQueue& queue_;
  std::map<std::string, unsigned, std::less<>> subscriptions_;  // by name; 0 without a bus
  platform::Token rejoined_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::session

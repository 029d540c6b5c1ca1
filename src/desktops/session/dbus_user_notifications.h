#pragma once

#include <cstdint>
#include <deque>
#include <set>
#include <string>

#include "desktops/session/bus_service.h"
#include "desktops/session/open_url.h"
#include "platform/lifetime.h"
#include "platform/main_queue.h"
#include "platform/user_notifications.h"

namespace hushpane::session {

// Messages through the desktop's notification server (Desktop Notifications Specification), which hears nothing before
// the first one.
class DbusUserNotifications : public platform::UserNotifications {
 public:
  DbusUserNotifications(DbusSession& session, UrlOpener& urls, platform::MainQueue& queue);

  void post(platform::UserNotification notification, std::function<void(bool)> completion) override;

 private:
  struct Post {
    platform::UserNotification notification;
    std::function<void(bool)> completion;
  };

  void sendNext();
  void send(const std::set<std::string>& capabilities);
  void sent(const std::optional<Glib::VariantContainerBase>& reply);
  void listen();
  void actionInvoked(const Glib::VariantContainerBase& arguments);

  BusService server_;
  UrlOpener& urls_;
  platform::MainQueue& queue_;
  std::deque<Post> waiting_;  // the first one is under way
  std::uint32_t shown_ = 0;   // the server's number of the last message; 0: none
  std::string link_;          // of that message
  platform::Token actions_;
  platform::Token serverChanged_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::session

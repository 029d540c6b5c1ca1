#pragma once

#include <giomm/dbusconnection.h>

#include "platform/lifetime.h"
#include "platform/notification_center.h"

namespace hushpane::session {

// Posts notification::didWake when the machine woke from sleep, as logind tells on the system bus. It joins that bus
// in the background; without it, or once it is gone, nothing is posted.
class WakeWatch {
 public:
  explicit WakeWatch(platform::NotificationCenter& center);
  ~WakeWatch();
  WakeWatch(const WakeWatch&) = delete;
  WakeWatch& operator=(const WakeWatch&) = delete;

 private:
  void watch(Glib::RefPtr<Gio::DBus::Connection> bus);
  void preparesForSleep(const Glib::VariantContainerBase& arguments);

  platform::NotificationCenter& center_;
  Glib::RefPtr<Gio::DBus::Connection> bus_;
  unsigned subscription_ = 0;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::session

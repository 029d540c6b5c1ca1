#pragma once

#include <functional>
#include <string>

namespace hushpane::platform {

struct UserNotification {
  std::string title;
  std::string body;
  std::string link{};       // opened when the user asks for more; empty: there is no more
  std::string linkTitle{};  // of the button for it
};

// Short messages that the desktop shows beside the work.
class UserNotifications {
 public:
  virtual ~UserNotifications() = default;

  // A later one replaces the one before. The completion follows on the main queue and tells whether the desktop took
  // the message.
  virtual void post(UserNotification notification, std::function<void(bool)> completion) = 0;
};

}  // namespace hushpane::platform

#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "desktops/sim/sim_main_queue.h"
#include "platform/user_notifications.h"

namespace hushpane::sim {

class SimUserNotifications : public platform::UserNotifications {
 public:
  explicit SimUserNotifications(SimMainQueue& queue) : queue_(queue) {}

  void post(platform::UserNotification notification, std::function<void(bool)> completion) override {
    if (!isAbsent_) posted_.push_back(std::move(notification));
    queue_.async([completion = std::move(completion), isTaken = !isAbsent_] { completion(isTaken); });
  }

  // All messages, the oldest first.
  const std::vector<platform::UserNotification>& posted() const { return posted_; }
  // From here on nobody shows messages, or somebody does again.
  void setAbsent(bool absent) { isAbsent_ = absent; }

 private:
  SimMainQueue& queue_;
  bool isAbsent_ = false;
  std::vector<platform::UserNotification> posted_;
};

}  // namespace hushpane::sim

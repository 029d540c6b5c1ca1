#pragma once

#include "desktops/sim/sim_main_queue.h"
#include "platform/notification_center.h"

namespace hushpane::sim {

// A notification centre that hears of things from outside the program.
class SimNotificationCenter : public platform::NotificationCenter {
 public:
  explicit SimNotificationCenter(SimMainQueue& queue) : queue_(queue) {}

  // Posts with the next turn of the main queue, as what another process or the desktop posts arrives.
  void postFromOutside(std::string_view name) {
    queue_.async([this, name = std::string(name)] { post(name); });
  }

 private:
  SimMainQueue& queue_;
};

}  // namespace hushpane::sim

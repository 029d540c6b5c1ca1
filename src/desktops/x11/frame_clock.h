#pragma once

#include "platform/frame_clock.h"
#include "platform/handler_list.h"
#include "platform/main_queue.h"

namespace hushpane::x11 {

// Sixty frames a second for as long as someone asks for them.
class FrameClock : public platform::FrameClock {
 public:
  explicit FrameClock(platform::MainQueue& queue) : queue_(queue) {}

  platform::Token run(std::function<void()> onFrame) override;

 private:
  platform::MainQueue& queue_;
  platform::Timer timer_;
  std::shared_ptr<platform::HandlerList<void()>> handlers_ = std::make_shared<platform::HandlerList<void()>>();
};

}  // namespace hushpane::x11

#pragma once

#include "desktops/sim/sim_main_queue.h"
#include "platform/frame_clock.h"
#include "platform/handler_list.h"

namespace hushpane::sim {

// Frames at every sixtieth of a virtual second, and only while somebody asks for them.
class SimFrameClock : public platform::FrameClock {
 public:
  explicit SimFrameClock(SimMainQueue& queue) : queue_(queue) {}

  platform::Token run(std::function<void()> onFrame) override;

  // For the end of a program whose queue was cleared.
  void forget() { next_.reset(); }

  bool isRunning() const { return !handlers_.empty(); }
  // How many frames there have been.
  std::size_t frameCount() const { return frameCount_; }

 private:
  void scheduleNextFrame();
  void frame();

  SimMainQueue& queue_;
  platform::HandlerList<void()> handlers_;
  platform::WorkItem next_;
  std::size_t frameCount_ = 0;
};

}  // namespace hushpane::sim

#pragma once

#include <memory>

#include "platform/main_queue.h"

namespace hushpane::session {

// The main queue on GLib's default main context. It has one source there, which is due only when a block is: an idle
// queue never wakes the process.
class MainQueue : public platform::MainQueue {
 public:
  MainQueue();
  ~MainQueue() override;

  void async(std::function<void()> block) override;
  platform::WorkItem after(double seconds, std::function<void()> block) override;
  platform::Timer repeating(double seconds, std::function<void()> block) override;
  double now() const override;
  platform::Date date() const override;

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace hushpane::session

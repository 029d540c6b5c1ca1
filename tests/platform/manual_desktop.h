#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <utility>

#include "platform/animator.h"

namespace hushpane::platform {

// Just enough of a desktop to animate: a clock that a test sets, and frames that a test gives.
class ManualDesktop : public testing::Test {
 protected:
  struct Queue : MainQueue {
    void async(std::function<void()>) override { FAIL() << "nothing here is queued"; }
    WorkItem after(double, std::function<void()>) override { return {}; }
    Timer repeating(double, std::function<void()>) override { return {}; }
    double now() const override { return time; }
    Date date() const override { return {time}; }
    double time = 0;
  };
  struct Clock : FrameClock {
    Token run(std::function<void()> onFrame) override {
      handler = std::move(onFrame);
      return Token([this] { handler = nullptr; });
    }
    std::function<void()> handler;
  };

  Queue queue;
  Clock clock;
  std::optional<Animator> animator{std::in_place, queue, clock};

  bool isAnimating() const { return static_cast<bool>(clock.handler); }
  // The next frame, that many seconds later.
  void frameAfter(double seconds) {
    queue.time += seconds;
    if (const auto handler = clock.handler) handler();
  }
};

}  // namespace hushpane::platform

#pragma once

#include <functional>

#include "platform/date.h"
#include "platform/token.h"

namespace hushpane::platform {

// A piece of delayed work; dropping it cancels the work. It stays non-empty after the work has run.
using WorkItem = Token;
// A repeating timer; dropping it invalidates the timer.
using Timer = Token;

// The main thread's run loop. Blocks run in the order in which they were queued, never inside the call that queues
// them.
class MainQueue {
 public:
  virtual ~MainQueue() = default;

  virtual void async(std::function<void()> block) = 0;
  // Runs the block once, `seconds` from now.
  virtual WorkItem after(double seconds, std::function<void()> block) = 0;
  // Runs the block every `seconds` seconds, first `seconds` from now.
  virtual Timer repeating(double seconds, std::function<void()> block) = 0;

  // Monotonic seconds since an arbitrary start.
  virtual double now() const = 0;
  // The wall clock.
  virtual Date date() const = 0;
};

}  // namespace hushpane::platform

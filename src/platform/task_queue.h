#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace hushpane::platform {

enum class TaskPriority { userInitiated, utility };

// Work away from the main thread. A task touches no object of the program: it gets what it needs by value and gives
// back a value.
class TaskQueue {
 public:
  virtual ~TaskQueue() = default;

  // Runs `work` on another thread, and then hands its result to `finish` on the main queue. Both are destroyed on the
  // main thread. What cannot be done, for want of a thread or of memory, gives a result as default-constructed. When
  // the desktop ends first, `finish` is never called.
  template <class Result>
  void run(TaskPriority priority, std::function<Result()> work, std::function<void(Result)> finish) {
    const auto result = std::make_shared<Result>();
    start(
        priority, [result, work = std::move(work)] { *result = work(); },
        [result, finish = std::move(finish)] { finish(std::move(*result)); });
  }

 protected:
  virtual void start(TaskPriority priority, std::function<void()> work, std::function<void()> finish) = 0;
};

}  // namespace hushpane::platform

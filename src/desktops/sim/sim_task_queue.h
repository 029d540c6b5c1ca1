#pragma once

#include <cstddef>
#include <functional>
#include <list>

#include "desktops/sim/sim_main_queue.h"
#include "platform/task_queue.h"

namespace hushpane::sim {

// Background work that is done when a test says so, on the thread that says it; the results arrive with the next turn
// of the main queue. Once it is automatic, the work of each turn is done with the next one.
class SimTaskQueue : public platform::TaskQueue {
 public:
  explicit SimTaskQueue(SimMainQueue& queue) : queue_(queue) {}

  // Does the task that is next: the oldest of userInitiated, else of utility. False when there is none.
  bool runNext();
  void runAll();
  // Tasks that are still to be done.
  std::size_t pendingCount() const { return tasks_.size(); }
  std::size_t pendingCount(platform::TaskPriority priority) const;

  // What is pending by then is done with the next turn, too.
  void setAutomatic(bool automatic);

  // Forgets all that is still to be done.
  void clear() { tasks_.clear(); }

 protected:
  void start(platform::TaskPriority priority, std::function<void()> work, std::function<void()> finish) override;

 private:
  struct Task {
    platform::TaskPriority priority;
    std::function<void()> work;
    std::function<void()> finish;
  };

  SimMainQueue& queue_;
  std::list<Task> tasks_;
  bool isAutomatic_ = false;
};

}  // namespace hushpane::sim

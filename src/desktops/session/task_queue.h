#pragma once

#include <memory>

#include "platform/main_queue.h"
#include "platform/task_queue.h"

namespace hushpane::session {

// Background work on a few threads that live only while there is work: an idle queue has no thread and never wakes the
// process. When the queue ends it waits for the work that is running, and the rest is dropped.
class TaskQueue : public platform::TaskQueue {
 public:
  explicit TaskQueue(platform::MainQueue& queue);
  ~TaskQueue() override;

 protected:
  void start(platform::TaskPriority priority, std::function<void()> work, std::function<void()> finish) override;

 private:
  class Workers;
  std::unique_ptr<Workers> workers_;
};

}  // namespace hushpane::session

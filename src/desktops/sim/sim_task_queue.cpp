#include "desktops/sim/sim_task_queue.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace hushpane::sim {

using platform::TaskPriority;

void SimTaskQueue::start(TaskPriority priority, std::function<void()> work, std::function<void()> finish) {
  tasks_.push_back({priority, std::move(work), std::move(finish)});
  if (isAutomatic_) queue_.async([this] { runNext(); });
}

bool SimTaskQueue::runNext() {
  auto next = std::ranges::find(tasks_, TaskPriority::userInitiated, &Task::priority);
  if (next == tasks_.end()) next = tasks_.begin();
  if (next == tasks_.end()) return false;
  std::list<Task> taken;
  taken.splice(taken.begin(), tasks_, next);
  try {
    taken.front().work();
  } catch (const std::exception&) {
    // The result stays as it was made.
  }
  queue_.async(std::move(taken.front().finish));
  return true;
}

void SimTaskQueue::runAll() {
  while (runNext()) continue;
}

std::size_t SimTaskQueue::pendingCount(TaskPriority priority) const {
  return static_cast<std::size_t>(std::ranges::count(tasks_, priority, &Task::priority));
}

void SimTaskQueue::setAutomatic(bool automatic) {
  isAutomatic_ = automatic;
  if (isAutomatic_) queue_.async([this] { runAll(); });
}

}  // namespace hushpane::sim

#include "desktops/session/task_queue.h"

#include <array>
#include <deque>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "desktops/session/ready_source.h"

namespace hushpane::session {

namespace {

constexpr std::size_t mostThreads = 2;

struct Task {
  std::function<void()> work;
  std::function<void()> finish;

  void perform() const noexcept try { work(); } catch (const std::exception&) {
    // The result stays as it was made.
  }
};
using TaskPtr = std::shared_ptr<const Task>;

}  // namespace

class TaskQueue::Workers {
 public:
  explicit Workers(platform::MainQueue& queue) : queue_(queue), source_(G_PRIORITY_DEFAULT, [this] { deliver(); }) {}

  ~Workers() {
    {
      const std::lock_guard lock(mutex_);
      for (auto& waiting : waiting_) waiting.swap(dropped_.emplace_back());
    }
    for (auto& thread : threads_) thread.join();
  }

  void add(platform::TaskPriority priority, TaskPtr task) {
    const std::lock_guard lock(mutex_);
    waiting_[static_cast<std::size_t>(priority)].push_back(std::move(task));
    if (threads_.size() - over_.size() < mostThreads) startThread();
  }

 private:
  // Without any thread the oldest task is over undone.
  void startThread() try {
    threads_.emplace_back([this] { work(); });
  } catch (const std::system_error&) {
    if (threads_.size() > over_.size()) return;
    done_.push_back(takeNext());
    source_.setReadyTime(0);
  }

  // Takes place on a thread of its own until nothing waits.
  void work() {
    std::unique_lock lock(mutex_);
    while (auto task = takeNext()) {
      lock.unlock();
      task->perform();
      lock.lock();
      done_.push_back(std::move(task));
      source_.setReadyTime(0);
    }
    over_.push_back(std::this_thread::get_id());
    source_.setReadyTime(0);
  }

  // The most urgent and then the oldest; null when nothing waits.
  TaskPtr takeNext() {
    for (auto& waiting : waiting_) {
      if (waiting.empty()) continue;
      auto task = std::move(waiting.front());
      waiting.pop_front();
      return task;
    }
    return nullptr;
  }

  // On the main thread.
  void deliver() {
    std::vector<TaskPtr> done;
    std::vector<std::thread> over;
    {
      const std::lock_guard lock(mutex_);
      source_.setReadyTime(-1);
      done.swap(done_);
      over = takeOver();
    }
    for (auto& thread : over) thread.join();
    for (auto& task : done) queue_.async([task = std::move(task)] { task->finish(); });
  }

  std::vector<std::thread> takeOver() {
    std::vector<std::thread> result;
    for (const auto id : std::exchange(over_, {}))
      std::erase_if(threads_, [&](auto& thread) {
        if (thread.get_id() != id) return false;
        result.push_back(std::move(thread));
        return true;
      });
    return result;
  }

  platform::MainQueue& queue_;
  std::mutex mutex_;                            // for all below; a task is destroyed outside it, on the main thread
  std::array<std::deque<TaskPtr>, 2> waiting_;  // by priority
  std::vector<TaskPtr> done_;
  std::vector<std::deque<TaskPtr>> dropped_;
  std::vector<std::thread> threads_;
  std::vector<std::thread::id> over_;  // those of them that have no more to do
  ReadySource source_;
};

TaskQueue::TaskQueue(platform::MainQueue& queue) : workers_(std::make_unique<Workers>(queue)) {}

TaskQueue::~TaskQueue() = default;

void TaskQueue::start(platform::TaskPriority priority, std::function<void()> work, std::function<void()> finish) {
  workers_->add(priority, std::make_shared<const Task>(Task{std::move(work), std::move(finish)}));
}

}  // namespace hushpane::session

#include "desktops/session/task_queue.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <future>
#include <iterator>
#include <mutex>
#include <thread>

#include "desktops/session/main_queue.h"

namespace hushpane::session::tests {
namespace {

using platform::TaskPriority;

std::ptrdiff_t threadCount() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/task"), std::filesystem::directory_iterator());
}

void runLoopUntil(const std::function<bool()>& condition) {
  while (!condition())
    if (!g_main_context_iteration(nullptr, FALSE)) std::this_thread::yield();
}

TEST(SessionTaskQueue, WorksOnOtherThreadsTheUrgentFirstAndKeepsNone) {
  const auto before = threadCount();
  MainQueue mainQueue;
  TaskQueue tasks(mainQueue);
  std::promise<void> gate;
  const std::shared_future<void> open(gate.get_future());
  std::vector<int> order;
  const auto collect = [&order](int number) { order.push_back(number); };
  const auto wait = [open](int number) {
    return [open, number] {
      open.wait();
      return number;
    };
  };
  // Those that run keep all threads busy.
  for (int busy = 0; busy < 2; ++busy) tasks.run<int>(TaskPriority::utility, wait(0), collect);
  std::vector<int> worked;
  std::mutex mutex;
  const auto work = [&](int number) {
    return [&, number] {
      const std::lock_guard lock(mutex);
      worked.push_back(number);
      return number;
    };
  };
  tasks.run<int>(TaskPriority::utility, work(3), collect);
  tasks.run<int>(TaskPriority::userInitiated, work(1), collect);
  tasks.run<int>(TaskPriority::userInitiated, work(1), collect);
  EXPECT_EQ(threadCount(), before + 2);
  gate.set_value();
  runLoopUntil([&] { return order.size() == 5; });
  EXPECT_EQ(worked.back(), 3);
  runLoopUntil([&] { return threadCount() == before; });
  tasks.run<int>(TaskPriority::utility, work(4), collect);
  runLoopUntil([&] { return order.back() == 4; });
}

TEST(SessionTaskQueue, WaitsForTheWorkThatRuns) {
  MainQueue mainQueue;
  auto tasks = std::make_unique<TaskQueue>(mainQueue);
  std::promise<void> running;
  std::atomic<bool> isOver = false;
  tasks->run<int>(
      TaskPriority::utility,
      [&] {
        running.set_value();
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        isOver = true;
        return 0;
      },
      [](int) { FAIL() << "the queue has ended"; });
  running.get_future().wait();
  tasks.reset();
  EXPECT_TRUE(isOver);
  while (g_main_context_iteration(nullptr, FALSE)) continue;
}

}  // namespace
}  // namespace hushpane::session::tests

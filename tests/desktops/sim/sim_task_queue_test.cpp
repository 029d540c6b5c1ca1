#include "desktops/sim/sim_task_queue.h"

#include <gtest/gtest.h>

namespace hushpane::sim::tests {
namespace {

using platform::TaskPriority;

TEST(SimTaskQueue, DoesTheUrgentFirstAndOnlyWhenTold) {
  SimMainQueue mainQueue;
  SimTaskQueue tasks(mainQueue);
  std::vector<int> worked, finished;
  const auto add = [&](TaskPriority priority, int number) {
    tasks.run<int>(
        priority, [&worked, number] { return worked.emplace_back(number); },
        [&](int result) { finished.push_back(result); });
  };
  add(TaskPriority::utility, 1);
  add(TaskPriority::userInitiated, 2);
  add(TaskPriority::userInitiated, 3);
  mainQueue.drain();
  EXPECT_TRUE(worked.empty());
  EXPECT_EQ(tasks.pendingCount(), 3u);
  EXPECT_EQ(tasks.pendingCount(TaskPriority::utility), 1u);
  EXPECT_TRUE(tasks.runNext());
  EXPECT_EQ(worked, std::vector{2});
  EXPECT_TRUE(finished.empty());
  mainQueue.drain();
  EXPECT_EQ(finished, std::vector{2});
  tasks.setAutomatic(true);
  mainQueue.drain();
  EXPECT_EQ(finished, (std::vector{2, 3, 1}));
  add(TaskPriority::utility, 4);
  mainQueue.drain();
  EXPECT_EQ(finished.back(), 4);
  EXPECT_FALSE(tasks.runNext());
}

}  // namespace
}  // namespace hushpane::sim::tests

#include <atomic>
#include <new>
#include <thread>

#include "contract/stage.h"

namespace hushpane::contract_tests {
namespace {

using platform::TaskPriority;

// Tells where its last copy ends, which is where the closure that holds it ends.
std::shared_ptr<const char> endingOn(std::vector<std::thread::id>& threads) {
  return {"", [&threads](const char*) { threads.push_back(std::this_thread::get_id()); }};
}

TEST_P(ContractTest, TheResultOfATaskArrivesOnTheMainQueue) {
  const auto mainThread = std::this_thread::get_id();
  std::vector<std::thread::id> endings;
  std::vector<std::string> results;
  std::thread::id finishedOn;
  platform().taskQueue().run<std::string>(
      TaskPriority::utility, [held = endingOn(endings)] { return std::string(1000, 'r'); },
      [&, held = endingOn(endings)](std::string result) {
        finishedOn = std::this_thread::get_id();
        results.push_back(std::move(result));
      });
  EXPECT_TRUE(results.empty()) << "never inside the call";
  ASSERT_TRUE(stage->waitUntil([&] { return endings.size() == 2; }));
  EXPECT_EQ(results, std::vector{std::string(1000, 'r')});
  EXPECT_EQ(finishedOn, mainThread);
  EXPECT_EQ(endings, std::vector(2, mainThread));
}

TEST_P(ContractTest, ManyTasksAreAllDoneAndNewOnesMayFollowFromAResult) {
  int finished = 0, sum = 0;
  std::function<void(int)> start = [&](int number) {
    const auto priority = number % 2 == 0 ? TaskPriority::utility : TaskPriority::userInitiated;
    platform().taskQueue().run<int>(
        priority, [number] { return number; },
        [&](int result) {
          ++finished;
          sum += result;
          if (result < 100) start(result + 100);
        });
  };
  for (int number = 0; number < 100; ++number) start(number);
  ASSERT_TRUE(stage->waitUntil([&] { return finished == 200; }));
  EXPECT_EQ(sum, 199 * 200 / 2);
}

TEST_P(ContractTest, ATaskThatCannotBeDoneGivesAnEmptyResult) {
  std::optional<int> result;
  platform().taskQueue().run<int>(
      TaskPriority::userInitiated, []() -> int { throw std::bad_alloc(); }, [&](int value) { result = value; });
  ASSERT_TRUE(stage->waitUntil([&] { return result.has_value(); }));
  EXPECT_EQ(result, 0);
}

TEST_P(ContractTest, AtTheEndOfThePlatformNoResultArrivesAndAllTasksEndOnTheMainThread) {
  std::vector<std::thread::id> endings;
  std::atomic<int> started = 0;
  int finished = 0;
  constexpr int count = 40;
  for (int index = 0; index < count; ++index)
    platform().taskQueue().run<int>(
        TaskPriority::utility,
        [&started, held = endingOn(endings)] {
          ++started;
          for (int round = 0; round < 200; ++round) std::this_thread::yield();
          return 1;
        },
        [&finished, held = endingOn(endings)](int) { ++finished; });
  stage->endPlatform();
  const int startedByThen = started;
  EXPECT_EQ(endings, std::vector(2 * count, std::this_thread::get_id()));
  EXPECT_EQ(finished, 0);
  EXPECT_EQ(started, startedByThen) << "nothing runs on";
}

}  // namespace
}  // namespace hushpane::contract_tests

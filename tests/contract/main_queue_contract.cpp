#include "contract/stage.h"

namespace hushpane::contract_tests {
namespace {

using platform::Token;

TEST_P(ContractTest, BlocksRunInTheirOrderAndNeverInsideTheCall) {
  std::vector<int> order;
  queue().async([&] {
    order.push_back(1);
    queue().async([&] { order.push_back(4); });
    order.push_back(2);
  });
  queue().async([&] { order.push_back(3); });
  EXPECT_TRUE(order.empty());
  EXPECT_TRUE(stage->waitUntil([&] { return order.size() == 4; }));
  EXPECT_EQ(order, (std::vector{1, 2, 3, 4}));
}

TEST_P(ContractTest, TimersRepeatUntilTheyAreDroppedAlsoByTheirOwnCallback) {
  int ticks = 0, late = 0;
  const double start = queue().now();
  Token timer = queue().repeating(0.1, [&] {
    if (++ticks == 3) timer.reset();
  });
  auto droppedTimer = queue().repeating(0.05, [&] { ++late; });
  auto droppedWork = queue().after(0.05, [&] { ++late; });
  droppedTimer.reset();
  droppedWork.reset();
  ASSERT_TRUE(stage->waitUntil([&] { return ticks == 3; }));
  EXPECT_GE(queue().now() - start, 0.3 - 0.02);
  stage->run(0.4);
  EXPECT_EQ(ticks, 3);
  EXPECT_EQ(late, 0);
}

TEST_P(ContractTest, DelayedWorkRunsOnceInTheOrderOfItsTimeAndNotEarly) {
  const double start = queue().now();
  std::vector<int> order;
  double ranAt = 0;
  const auto late = queue().after(0.2, [&] {
    order.push_back(2);
    ranAt = queue().now();
  });
  const auto soon = queue().after(0.05, [&] { order.push_back(1); });
  ASSERT_TRUE(stage->waitUntil([&] { return order.size() == 2; }));
  EXPECT_EQ(order, (std::vector{1, 2}));
  EXPECT_GE(ranAt - start, 0.2 - 1e-9);
  stage->run(0.3);
  EXPECT_EQ(order.size(), 2u);
  EXPECT_TRUE(late) << "a work item stays non-empty after it ran";
}

TEST_P(ContractTest, ATokenMayOutliveThePlatform) {
  int calls = 0;
  Token timer = queue().repeating(0.01, [&] { ++calls; });
  Token work = queue().after(0.01, [&] { ++calls; });
  Token monitor = platform().eventMonitors().addGlobalMonitor(maskOf(platform::EventType::keyDown),
                                                              [&](const platform::Event&) { ++calls; });
  Token observer = platform().notificationCenter().addObserver("name", [&] { ++calls; });
  stage->endPlatform();
  timer.reset();
  work.reset();
  monitor.reset();
  observer.reset();
  EXPECT_EQ(calls, 0);
}

TEST_P(ContractTest, DistributedNotificationsOfOtherProcessesArrive) {
  int heard = 0;
  auto observer =
      platform().distributedNotificationCenter().addObserver("com.corvane.Hushpane.widgetModeChange", [&] { ++heard; });
  stage->run(0.05);
  stage->postDistributed("com.corvane.Hushpane.widgetModeChange");
  EXPECT_TRUE(stage->waitUntil([&] { return heard == 1; }));
  observer.reset();
  stage->postDistributed("com.corvane.Hushpane.widgetModeChange");
  stage->run(0.2);
  EXPECT_EQ(heard, 1);
}

TEST_P(ContractTest, OpenedUrlsWaitForTheHandlerAndArriveOnTheMainQueue) {
  std::vector<std::string> received;
  const auto collect = [&](const std::vector<std::string>& urls) {
    received.insert(received.end(), urls.begin(), urls.end());
  };
  stage->openUrls({"hushpane://mode/focus", "hushpane://mode/standard"});
  stage->run(0.05);
  platform().application().setOpenUrlsHandler(collect);
  EXPECT_TRUE(received.empty());
  ASSERT_TRUE(stage->waitUntil([&] { return received.size() == 2; }));
  stage->openUrls({"x"});
  ASSERT_TRUE(stage->waitUntil([&] { return received.size() == 3; }));
  EXPECT_EQ(received, (std::vector<std::string>{"hushpane://mode/focus", "hushpane://mode/standard", "x"}));
}

}  // namespace
}  // namespace hushpane::contract_tests

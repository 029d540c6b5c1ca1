#include "desktops/sim/sim_main_queue.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "desktops/sim/sim_frame_clock.h"

namespace hushpane::sim {
namespace {

TEST(SimMainQueueTest, ManySmallStepsEndWhereOneLargeStepDoes) {
  SimMainQueue queue;
  int ticks = 0;
  const auto timer = queue.repeating(0.1, [&] { ++ticks; });
  for (int step = 0; step < 1000; ++step) queue.advance(0.01);
  EXPECT_EQ(ticks, 100);
  EXPECT_DOUBLE_EQ(queue.now(), 10);
}

TEST(SimMainQueueTest, TheClockInsideABlockShowsTheTimeItWasDue) {
  SimMainQueue queue;
  queue.setDate({1000});
  double now = 0;
  double date = 0;
  const auto work = queue.after(0.25, [&] {
    now = queue.now();
    date = queue.date().secondsSince1970;
  });
  queue.advance(0.249999);
  EXPECT_EQ(now, 0);
  queue.advance(4.750001);
  EXPECT_DOUBLE_EQ(now, 0.25);
  EXPECT_DOUBLE_EQ(date, 1000.25);
  EXPECT_DOUBLE_EQ(queue.date().secondsSince1970, 1005);
}

TEST(SimMainQueueTest, WorkDroppedInsideItsOwnBlockKeepsItsClosureToTheEnd) {
  SimMainQueue queue;
  auto held = std::make_shared<int>(7);
  const std::weak_ptr<int> watched = held;
  int seen = 0;
  platform::Timer timer;
  timer = queue.repeating(0.1, [&, held = std::move(held)] {
    timer.reset();
    seen = *held;
  });
  queue.advance(1);
  EXPECT_EQ(seen, 7);
  EXPECT_TRUE(watched.expired());
}

TEST(SimMainQueueTest, TimesThatMakeNoSenseCountAsNow) {
  SimMainQueue queue;
  int ran = 0;
  const auto negative = queue.after(-1, [&] { ++ran; });
  const auto none = queue.after(std::numeric_limits<double>::quiet_NaN(), [&] { ++ran; });
  queue.drain();
  EXPECT_EQ(ran, 2);
  const auto endless = queue.after(std::numeric_limits<double>::infinity(), [&] { ++ran; });
  queue.advance(1e6);
  EXPECT_EQ(ran, 2);
}

TEST(SimFrameClockTest, AHolderThatComesRightAfterTheLastOneLeftMissesNoFrame) {
  SimMainQueue queue;
  SimFrameClock clock(queue);
  int frames = 0;
  platform::Token token = clock.run([] {});
  queue.advance(0.005);
  token.reset();
  token = clock.run([&] { ++frames; });
  queue.advance(0.1);
  EXPECT_EQ(frames, 6);
}

}  // namespace
}  // namespace hushpane::sim

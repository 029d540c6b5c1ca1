#include "input/mouse_shake_detector.h"

#include <memory>

#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

class MouseShakeDetectorTest : public SimulatedProgram {
 protected:
  void SetUp() override {
    prepareDesktop();
    detector = std::make_unique<MouseShakeDetector>(*desktop);
    detector->onShake = [this] { ++shakes; };
    detector->start();
  }
  void TearDown() override { detector.reset(); }

  void move(double deltaX) {
    desktop->eventMonitors().moveMouse(deltaX);
    desktop->drain();
  }
  // Strokes to and fro, the first to the right. The last one only begins: n strokes have n - 1 reversals.
  void strokes(int count, double distance = 60, double secondsOfOne = 0.1) {
    for (int stroke = 0; stroke < count; ++stroke) {
      const double sign = stroke % 2 == 0 ? 1 : -1;
      for (int step = 0; step < 4; ++step) move(sign * distance / 4);
      desktop->advance(secondsOfOne);
    }
  }

  std::unique_ptr<MouseShakeDetector> detector;
  int shakes = 0;
};

TEST_F(MouseShakeDetectorTest, TheSixthReversalIsAShake) {
  strokes(6);
  EXPECT_EQ(shakes, 0);
  desktop->eventMonitors().moveMouse(15);
  EXPECT_EQ(shakes, 0) << "never inside the event";
  desktop->drain();
  EXPECT_EQ(shakes, 1);
  strokes(20, 60, 0.02);
  EXPECT_EQ(shakes, 1) << "deaf after a shake";
}

TEST_F(MouseShakeDetectorTest, OnlyReversalsOfOneSecondCount) {
  strokes(40, 60, 0.21);  // five reversals lie within a second at any time
  EXPECT_EQ(shakes, 0);
  strokes(3, 60, 0.1);
  EXPECT_EQ(shakes, 1) << "these make it six";
}

TEST_F(MouseShakeDetectorTest, AReversalOfExactlyOneSecondAgoStillCounts) {
  move(60);
  move(-60);  // the first reversal
  strokes(1, 60, 0.5);
  for (const double step : {-60, 60, -60}) move(step);
  desktop->advance(0.5);
  move(60);
  EXPECT_EQ(shakes, 1);
}

TEST_F(MouseShakeDetectorTest, AShortStrokeCountsForNothingButLosesNothing) {
  strokes(30, 59.9);
  EXPECT_EQ(shakes, 0);
  desktop->advance(2);
  strokes(4, 60, 0.05);  // three reversals, then one to the left in progress
  move(40);              // the fourth
  move(-60);             // ends a stroke of 40
  move(60);
  EXPECT_EQ(shakes, 0) << "the fifth";
  move(-60);
  EXPECT_EQ(shakes, 1);
}

TEST_F(MouseShakeDetectorTest, SlowAndVerticalMovementIsNotSeen) {
  for (int step = 0; step < 2000; ++step) move(step / 200 % 2 == 0 ? 0.5 : -0.5);
  move(0);
  strokes(6);
  move(0.5);
  EXPECT_EQ(shakes, 0) << "too slow to reverse anything";
  move(0.51);
  EXPECT_EQ(shakes, 1);
}

TEST_F(MouseShakeDetectorTest, AfterTheDeafTimeItBeginsFromNothing) {
  strokes(6, 60, 0.05);
  move(100);
  ASSERT_EQ(shakes, 1);
  desktop->advance(MouseShakeDetector::debounceInterval);
  move(600);  // exactly at the end, still deaf
  desktop->advance(0.01);
  // The first of these reverses nothing, neither what completed the shake nor what was not heard.
  for (const double step : {-60, 60, -60, 60, -60, 60}) move(step);
  EXPECT_EQ(shakes, 1) << "five reversals";
  move(-60);
  EXPECT_EQ(shakes, 2);
}

TEST_F(MouseShakeDetectorTest, StoppingForgetsTheStrokesButNotTheDeafness) {
  strokes(6);
  detector->stop();
  EXPECT_EQ(desktop->eventMonitors().monitorCount(), 0u);
  move(15);
  detector->start();
  detector->start();
  EXPECT_EQ(desktop->eventMonitors().monitorCount(), 1u);
  strokes(6, 60, 0.05);
  EXPECT_EQ(shakes, 0) << "six fresh reversals are needed";
  move(15);
  EXPECT_EQ(shakes, 1);
  detector->stop();
  detector->start();
  strokes(10, 60, 0.05);
  EXPECT_EQ(shakes, 1) << "still deaf";
}

TEST_F(MouseShakeDetectorTest, NothingFollowsItsEnd) {
  strokes(6);
  desktop->eventMonitors().moveMouse(15);
  detector.reset();
  desktop->drain();
  EXPECT_EQ(shakes, 0);
  desktop->eventMonitors().setRefusesMonitors(true);
  detector = std::make_unique<MouseShakeDetector>(*desktop);
  detector->start();
  desktop->eventMonitors().setRefusesMonitors(false);
  detector->start();
  EXPECT_EQ(desktop->eventMonitors().monitorCount(), 1u) << "refused once, taken when asked again";
}

}  // namespace
}  // namespace hushpane::tests

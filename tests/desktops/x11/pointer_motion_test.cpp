#include "desktops/x11/pointer_motion.h"

#include <gtest/gtest.h>

namespace hushpane::x11 {
namespace {

constexpr double width = 1920;

TEST(HorizontalAxisTest, PositionsSpanTheDesktop) {
  HorizontalAxis tablet(1000, 33000);
  EXPECT_EQ(tablet.step(1000, width), 0) << "where it begins is no step";
  EXPECT_DOUBLE_EQ(tablet.step(33000, width), width);
  EXPECT_DOUBLE_EQ(tablet.step(17000, width), -width / 2);
}

// A shake of a virtual pointer that says it reports steps but reports positions.
TEST(HorizontalAxisTest, PositionsThatPassForStepsAreFoundOut) {
  HorizontalAxis remote;
  double leftwards = 0, largest = 0;
  const auto shake = [&](double offset) {
    for (int stroke = 0; stroke < 4; ++stroke)
      for (int index = 0; index < 10; ++index) {
        const double along = stroke % 2 == 0 ? index : 9 - index;
        const double step = remote.step(offset + 10 * along, width);
        leftwards += step < 0 ? -step : 0;
        largest = std::max(largest, std::abs(step));
      }
  };
  shake(600);
  largest = leftwards = 0;
  shake(610);
  EXPECT_GT(leftwards, 170);
  EXPECT_LE(largest, 11);
  EXPECT_EQ(remote.step(-7, width), -7) << "a step at once, since no position is negative";
  EXPECT_EQ(remote.step(5, width), 5);
}

TEST(HorizontalAxisTest, PushingAMouseAgainstTheEdgeReversesNothing) {
  HorizontalAxis mouse;
  for (int index = 0; index < 1000; ++index) EXPECT_GE(mouse.step(12, width), 0);
  for (const double step : {-12.0, 12.0, 0.0, 400.25}) EXPECT_EQ(mouse.step(step, width), step);
}

}  // namespace
}  // namespace hushpane::x11

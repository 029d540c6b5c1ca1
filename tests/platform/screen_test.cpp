#include "platform/screen.h"

#include <gtest/gtest.h>

namespace hushpane::platform {
namespace {

struct SomeScreens : Screens {
  std::vector<Screen> list;
  explicit SomeScreens(std::vector<Screen> screens) : list(std::move(screens)) {}
  const std::vector<Screen>& screens() const override { return list; }
  Rect visibleFrame(const Screen& screen) const override { return screen.frame; }
};

TEST(Screens, AnAreaHasTheScaleOfTheScreenOfItsMiddleOrTheNearest) {
  const SomeScreens screens({{{0, 0, 1000, 800}, 1, "", 1}, {{1000, 100, 500, 400}, 2, "", 2}});
  EXPECT_EQ(screens.scaleOf({100, 100, 50, 50}), 1);
  EXPECT_EQ(screens.scaleOf({980, 200, 60, 60}), 2) << "most of it lies on the second";
  EXPECT_EQ(screens.scaleOf({960, 200, 60, 60}), 1);
  EXPECT_EQ(screens.scaleOf({900, 200, 200, 60}), 2) << "at the edge that both share";
  EXPECT_EQ(screens.scaleOf({1200, 20, 100, 60}), 2) << "above the second";
  EXPECT_EQ(screens.scaleOf({-900, -900, 10, 10}), 1);
  EXPECT_EQ(screens.scaleOf({1450, 700, 10, 10}), 2);
  EXPECT_EQ(SomeScreens({}).scaleOf({0, 0, 10, 10}), 1);
}

}  // namespace
}  // namespace hushpane::platform

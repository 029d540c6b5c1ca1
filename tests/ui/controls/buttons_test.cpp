#include "support/page.h"
#include "ui/controls/back_button.h"
#include "ui/controls/prominent_button.h"
#include "ui/global_accent.h"

namespace hushpane::tests {
namespace {

using namespace declarative;

class ButtonsTest : public PageTest {
 protected:
  int presses = 0;
  std::function<void()> press = [this] { ++presses; };

  static double circleAlpha(const Page& page) { return page.fillsOf(22, 22).at(0).color().alpha / primary.light.alpha; }
};

TEST_F(ButtonsTest, HoveringTheBackButtonChangesItsCircleOnly) {
  auto page = show(BackButton{press});
  EXPECT_EQ(page.size(), (platform::Size{22, 22}));
  EXPECT_NEAR(circleAlpha(page), 0.08, 1e-6);
  const auto before = page.all();
  page.hover({11, 11});
  page.advance(0.06);
  EXPECT_NEAR(circleAlpha(page), 0.08 + 0.06 * platform::evaluate(platform::TimingFunction::easeOut, 0.5), 0.01);
  page.advance(0.08);
  EXPECT_NEAR(circleAlpha(page), 0.14, 1e-6);
  EXPECT_FALSE(page.isMoving());
  const auto after = page.all();
  ASSERT_EQ(after.size(), before.size());
  for (std::size_t index = 1; index < after.size(); ++index)
    EXPECT_EQ(after[index].drawing, before[index].drawing) << "the arrow";
  page.leave();
  page.advance(0.14);
  EXPECT_NEAR(circleAlpha(page), 0.08, 1e-6);
}

TEST_F(ButtonsTest, TheBackButtonActsAndSaysWhereItLeads) {
  auto page = show(BackButton{press});
  page.click({11, 4});
  EXPECT_EQ(presses, 1);
  page.click({1, 1});
  EXPECT_EQ(presses, 1) << "outside the circle";
  EXPECT_EQ(page.host().tooltip({11, 11}), "Back");
}

TEST_F(ButtonsTest, FromRightToLeftTheArrowPointsRight) {
  const auto outline = [](const Page& page) {
    const auto arrow = page.all().back();
    const auto* path = arrow.as<StrokedPath>() ? &arrow.as<StrokedPath>()->path : &arrow.as<FilledPath>()->path;
    const auto bounds = path->controlBounds();
    return path->segments().at(1).points[0].x - bounds.x;
  };
  EXPECT_LT(outline(show(BackButton{press})), 1) << "the middle of the arrow is its left end";
  EXPECT_GT(outline(show(BackButton{press}, rightToLeft)), 1);
}

TEST_F(ButtonsTest, TheProminentButtonIsAtLeastAsWideAsItsTitle) {
  const auto width = [&](const std::string& title, double least) {
    return show(ProminentButton{title, press, globalAccent, least}).size().width;
  };
  EXPECT_EQ(width("Go", 110), 134);
  EXPECT_GT(width("Jetzt mit Hushpane loslegen", 110), 150);
  auto page = show(ProminentButton{"Go", press, globalAccent, 110});
  EXPECT_EQ(page.size().height, 28);
  EXPECT_TRUE(hasColor(page.fillsOf(134, 28).at(0), globalAccent.light));
  EXPECT_TRUE(hasColor(page.text("Go"), {1, 1, 1, 1}));
  EXPECT_NEAR(page.text("Go").center().x, 67, 0.51);
  page.click({3, 14});
  EXPECT_EQ(presses, 1);
}

}  // namespace
}  // namespace hushpane::tests

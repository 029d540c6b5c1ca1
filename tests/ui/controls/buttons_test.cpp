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
};

TEST_F(ButtonsTest, TheBackButtonIsARoundTargetThatDarkensUnderThePointer) {
  auto page = show(BackButton{press});
  const auto alpha = [&] { return page.fillsOf(22, 22).at(0).color().alpha; };
  const double pale = alpha();
  page.hover({11, 11});
  page.advance(0.06);
  EXPECT_GT(alpha(), pale);
  EXPECT_TRUE(page.isMoving());
  page.advance(0.08);
  EXPECT_FALSE(page.isMoving());
  page.leave();
  page.advance(0.14);
  EXPECT_NEAR(alpha(), pale, 1e-6);

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
  EXPECT_GT(show(ProminentButton{"Jetzt mit Hushpane loslegen", press, globalAccent, 110}).size().width, 150);
  auto page = show(ProminentButton{"Go", press, globalAccent, 110});
  EXPECT_EQ(page.size(), (platform::Size{134, 28}));
  EXPECT_TRUE(hasColor(page.fillsOf(134, 28).at(0), globalAccent.light));
  EXPECT_NEAR(page.text("Go").center().x, 67, 0.51);
  page.click({3, 14});
  EXPECT_EQ(presses, 1);
}

}  // namespace
}  // namespace hushpane::tests

#include "ui/menu/menu_bar_hint_view.h"

#include "support/page.h"

namespace hushpane::tests {
namespace {

using namespace declarative;
using platform::Rect;

class MenuBarHintViewTest : public PageTest {};

TEST_F(MenuBarHintViewTest, TheBubbleBreathesAndBobsInTheMiddleOfItsPanelWithItsTailUp) {
  auto page = show(Element(MenuBarHintView()).frame({.width = 186, .height = 75}));
  const auto bubble = [&] { return page.fills().at(0); };
  EXPECT_EQ(bubble().frame, (Rect{18, 19, 150, 39})) << "a point lower than in the middle";
  const auto words = page.text("Hushpane is here");
  EXPECT_NEAR(words.center().x, 93, 0.51);
  EXPECT_NEAR(words.center().y, bubble().frame.y + 7 + 32.0 / 2, 0.51)
      << "in the middle of the capsule without its tail";
  const auto fill = bubble();
  EXPECT_EQ(fill.as<FilledPath>()->path.segments().at(2).points[0], (platform::Point{93, fill.frame.y})) << "the tip";

  EXPECT_NEAR(bubble().opacity, 0.78, 0.001);
  page.advance(1.6);
  EXPECT_NEAR(bubble().opacity, 1, 0.01);
  page.advance(1.4);
  EXPECT_NEAR(bubble().frame.y, 18, 0.01);
  EXPECT_LT(bubble().opacity, 1);
  EXPECT_TRUE(page.isMoving());
}

}  // namespace
}  // namespace hushpane::tests

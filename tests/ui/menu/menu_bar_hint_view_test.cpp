#include "ui/menu/menu_bar_hint_view.h"

#include "desktops/shared/cairo_canvas.h"
#include "support/page.h"
#include "ui/menu/menu_bar_icon.h"

namespace hushpane::tests {
namespace {

using namespace declarative;
using platform::Rect;

class MenuBarHintViewTest : public PageTest {};

TEST_F(MenuBarHintViewTest, TheBubbleBreathesAndBobsInTheMiddleOfItsPanel) {
  auto page = show(Element(MenuBarHintView()).frame({.width = 186, .height = 75}));
  const auto bubble = [&] { return page.fills().at(0); };
  EXPECT_EQ(bubble().frame, (Rect{18, 19, 150, 39})) << "a point lower than in the middle";
  EXPECT_NEAR(bubble().opacity, 0.78, 0.001);
  ASSERT_EQ(bubble().shadows.size(), 2u);
  const auto words = page.text("Hushpane is here");
  EXPECT_NEAR(words.center().x, 93, 0.51);
  EXPECT_NEAR(words.center().y, bubble().frame.y + 7 + 32.0 / 2, 0.51)
      << "in the middle of the capsule without its tail";
  page.advance(1.6);
  EXPECT_NEAR(bubble().opacity, 1, 0.01);
  page.advance(1.4);
  EXPECT_NEAR(bubble().frame.y, 18, 0.01);
  EXPECT_LT(bubble().opacity, 1);
  page.advance(3);
  EXPECT_NEAR(bubble().frame.y, 19, 0.01);
  EXPECT_TRUE(page.isMoving());
}

TEST_F(MenuBarHintViewTest, TheTailPointsUpFromTheMiddle) {
  const auto page = show(Element(MenuBarHintView()).frame({.width = 186, .height = 75}));
  const auto fill = page.fills().at(0);
  const auto& path = fill.as<FilledPath>()->path;
  EXPECT_EQ(path.controlBounds().y, fill.frame.y);
  EXPECT_EQ(path.segments().at(2).points[0], (platform::Point{93, fill.frame.y})) << "the tip";
  EXPECT_NEAR(path.controlBounds().bottom(), fill.frame.bottom(), 0.1);
}

TEST(MenuBarIcon, IsABodyWithABandThatFillsWhileACoverIsOnScreen) {
  const auto drawn = [](bool isActive) {
    platform::Image image{20, 20, std::vector<std::uint32_t>(400)};
    desktops::CairoCanvas canvas(image, 1);
    drawMenuBarIcon(canvas, isActive);
    return image;
  };
  const auto alpha = [](const platform::Image& image, int x, int y) {
    return static_cast<int>(image.pixels[static_cast<std::size_t>(y) * 20 + static_cast<std::size_t>(x)] >> 24);
  };
  const auto active = drawn(true), inactive = drawn(false);
  for (const auto& image : {active, inactive}) {
    EXPECT_EQ(alpha(image, 8, 10), 0) << "the body is empty";
    EXPECT_EQ(alpha(image, 8, 1), 0);
    EXPECT_GT(alpha(image, 8, 3), 100) << "its outline";
    EXPECT_GT(alpha(image, 1, 10), 100);
    for (const auto pixel : image.pixels) EXPECT_EQ(pixel & 0xffffff, 0u) << "black alone";
  }
  EXPECT_EQ(alpha(active, 16, 10), 255);
  EXPECT_NEAR(alpha(inactive, 16, 10), 0.13 * 255, 1.5);
  EXPECT_GT(alpha(inactive, 14, 10), 0.13 * 255 + 10) << "the line before the band";
}

}  // namespace
}  // namespace hushpane::tests

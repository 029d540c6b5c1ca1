#include "ui/menu/mode_pod_view.h"

#include "support/page.h"

namespace hushpane::tests {
namespace {

using namespace declarative;

constexpr platform::Color focusColor{0.66, 0.38, 0.58, 1};

class ModePodViewTest : public PageTest {
 protected:
  int presses = 0;

  Page pod(bool isActive) {
    return show(ModePodView{VeilMode::focus, isActive, [this] { ++presses; }}, {}, 105);
  }
  static Shown background(const Page& page) { return page.fills().at(0); }
};

TEST_F(ModePodViewTest, TheWholePodActsAndOnlyTheActiveOneHasTheMark) {
  auto page = pod(true);
  EXPECT_EQ(background(page).frame, (platform::Rect{0, 0, 105, page.size().height}));
  EXPECT_NEAR(page.text("Focus").frame.bottom(), page.size().height - 10, 0.51);
  const auto mark = page.fillsOf(4, 4).at(0);
  EXPECT_EQ(mark.frame.right(), 95);
  EXPECT_TRUE(hasColor(mark, focusColor));
  EXPECT_TRUE(pod(false).fillsOf(4, 4).empty()) << "the mark of another mode";
  page.click({100, 26});
  page.click("Focus");
  EXPECT_EQ(presses, 2);
}

TEST_F(ModePodViewTest, TheLivelierItsStateTheMoreColourItHas) {
  double alpha = 1, width = 2, titleOpacity = 1;  // of the state before
  for (const auto& [isActive, isHovered] : {std::pair{true, true}, {true, false}, {false, true}, {false, false}}) {
    SCOPED_TRACE(std::to_string(isActive) + std::to_string(isHovered));
    auto page = pod(isActive);
    if (isHovered) page.hover({52, 26});
    EXPECT_EQ(page.isMoving(), isHovered);
    page.advance(0.2);
    EXPECT_FALSE(page.isMoving());
    EXPECT_EQ(background(page).frame.width, 105) << "only what is inside grows";
    EXPECT_LT(background(page).color().alpha, alpha);
    alpha = background(page).color().alpha;
    EXPECT_EQ(isNear(background(page).color(), {0.66, 0.38, 0.58, alpha}), isActive || isHovered);
    const auto borders = page.all(
        [](const Shown& shown) { return shown.as<StrokedPath>() && std::abs(shown.frame.width - 105) < 0.001; });
    ASSERT_FALSE(borders.empty());
    EXPECT_LE(borders[0].as<StrokedPath>()->stroke.width, width);
    width = borders[0].as<StrokedPath>()->stroke.width;
    EXPECT_EQ(borders[0].shadows.size(), isActive || isHovered ? 1u : 0u) << "its glow";
    const auto title = page.text("Focus");
    EXPECT_LE(title.opacity, titleOpacity);
    titleOpacity = title.opacity;
    EXPECT_TRUE(hasColor(title, isActive || isHovered ? primary.light : secondary.light));
    EXPECT_EQ(title.as<DrawnText>()->scale > 1, isHovered);
    EXPECT_EQ(title.shadows.empty(), !isHovered);
  }
  EXPECT_EQ(width, 1);
  EXPECT_LT(titleOpacity, 0.8);
}

}  // namespace
}  // namespace hushpane::tests

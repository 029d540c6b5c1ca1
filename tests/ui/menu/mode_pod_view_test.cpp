#include "ui/menu/mode_pod_view.h"

#include "support/page.h"

namespace hushpane::tests {
namespace {

using namespace declarative;

constexpr platform::Color focusColor{0.66, 0.38, 0.58, 1};
constexpr platform::Point middle{52, 26};

platform::Color faded(platform::Color color, double alpha) {
  color.alpha *= alpha;
  return color;
}

class ModePodViewTest : public PageTest {
 protected:
  int presses = 0;

  Page pod(VeilMode mode, bool isActive, const Environment& environment = light) {
    return show(ModePodView{mode, isActive, [this] { ++presses; }}, environment, 105);
  }
  static Shown background(const Page& page) { return page.fills().at(0); }
  static Shown border(const Page& page) {
    return page
        .all([&](const Shown& shown) {
          return shown.as<StrokedPath>() && std::abs(shown.frame.width - page.size().width) < 0.001;
        })
        .at(0);
  }
  static double borderWidth(const Page& page) { return border(page).as<StrokedPath>()->stroke.width; }
};

TEST_F(ModePodViewTest, ThePodFillsItsWidthWithIconMarkAndTitle) {
  const auto page = pod(VeilMode::focus, true);
  const auto title = page.text("Focus");
  EXPECT_EQ(page.size().width, 105);
  EXPECT_EQ(background(page).frame, (platform::Rect{0, 0, 105, page.size().height}));
  EXPECT_EQ(title.frame.x, 10);
  EXPECT_NEAR(title.frame.bottom(), page.size().height - 10, 0.51);
  const auto mark = page.fillsOf(4, 4).at(0);
  EXPECT_EQ(mark.frame.right(), 95);
  EXPECT_TRUE(hasColor(mark, focusColor));
  EXPECT_TRUE(pod(VeilMode::focus, false).fillsOf(4, 4).empty()) << "the mark of another mode";
}

TEST_F(ModePodViewTest, EachStateHasItsColours) {
  const auto pale = [](double alpha) { return faded(primary.light, alpha); };
  const auto tinted = [](double alpha) { return faded(focusColor, alpha); };
  struct State {
    bool isActive, isHovered;
    platform::Color fill, border;
    double width, glow, glowRadius, titleOpacity;
  };
  for (const auto& [isActive, isHovered, fill, line, width, glow, glowRadius, titleOpacity] :
       {State{true, true, tinted(0.18), tinted(0.9), 1.6, 0.45, 6, 1},
        State{true, false, tinted(0.13), tinted(0.72), 1.6, 0.45, 6, 1},
        State{false, true, tinted(0.06), tinted(0.42), 1.2, 0.18, 3, 0.92},
        State{false, false, pale(0.03), pale(0.05), 1, 0, 3, 0.72}}) {
    SCOPED_TRACE(std::to_string(isActive) + std::to_string(isHovered));
    auto page = pod(VeilMode::focus, isActive);
    if (isHovered) page.hover(middle);
    page.advance(0.2);
    EXPECT_TRUE(hasColor(background(page), fill));
    EXPECT_TRUE(hasColor(border(page), line));
    EXPECT_DOUBLE_EQ(borderWidth(page), width);
    ASSERT_EQ(border(page).shadows.size(), glow > 0 ? 1u : 0u);
    if (glow > 0) {
      EXPECT_TRUE(isNear(border(page).shadows[0].color, tinted(glow)));
      EXPECT_EQ(border(page).shadows[0].radius, glowRadius);
    }
    const auto title = page.text("Focus");
    EXPECT_NEAR(title.opacity, titleOpacity, 1e-6);
    EXPECT_TRUE(hasColor(title, isActive || isHovered ? primary.light : secondary.light));
    EXPECT_EQ(title.as<DrawnText>()->scale, isHovered ? 1.025 : 1);
    EXPECT_EQ(title.shadows.size(), isHovered ? 2u : 0u);
  }
}

TEST_F(ModePodViewTest, HoveringTakes160Milliseconds) {
  auto page = pod(VeilMode::cleanDesktop, false);
  page.hover(middle);
  page.advance(0.08);
  const double halfway = page.text("Ambience").as<DrawnText>()->scale;
  EXPECT_NEAR(halfway, 1 + 0.025 * platform::evaluate(platform::TimingFunction::easeOut, 0.5), 0.004);
  EXPECT_EQ(background(page).frame.width, 105) << "only what is inside grows";
  page.advance(0.1);
  EXPECT_FALSE(page.isMoving());
  page.leave();
  page.advance(0.2);
  EXPECT_EQ(page.text("Ambience").as<DrawnText>()->scale, 1);
}

TEST_F(ModePodViewTest, TheWholePodActs) {
  auto page = pod(VeilMode::standard, false, dark);
  page.click({100, 26});
  page.click("Standard");
  EXPECT_EQ(presses, 2);
}

TEST_F(ModePodViewTest, RevealIsGrey) {
  const auto page = pod(VeilMode::reveal, true, dark);
  EXPECT_TRUE(hasColor(page.fillsOf(4, 4).at(0), secondary.dark));
  EXPECT_TRUE(page.shows("Reveal"));
}

}  // namespace
}  // namespace hushpane::tests

#include "support/page.h"
#include "ui/controls/pell_switch_style.h"
#include "ui/controls/sub_option_toggle_style.h"
#include "ui/global_accent.h"

namespace hushpane::tests {
namespace {

using namespace declarative;

class TogglesTest : public PageTest {
 protected:
  std::vector<bool> written;

  // A row 300 points wide.
  template <class Style>
  Page row(Style style, bool isOn, const Environment& environment = light) {
    const auto content = [this, style](Binding<bool> value) {
      const Binding<bool> noted{value.get, [this, value](bool isOn) {
                                  written.push_back(isOn);
                                  value.set(isOn);
                                }};
      return toggle(text("Label"), noted, style);
    };
    return show(Around<bool>{isOn, content}, environment, 300);
  }

  static Shown track(const Page& page, double scale = 1) { return page.fillsOf(34 * scale, 20 * scale).at(0); }
  static Shown knob(const Page& page, double scale = 1) { return page.fillsOf(14 * scale, 14 * scale).at(0); }
  static double knobOffset(const Page& page, double scale = 1) {
    return knob(page, scale).center().x - track(page, scale).center().x;
  }
};

TEST_F(TogglesTest, TheSwitchIs34By20WithItsKnob7PointsOffTheMiddle) {
  for (const double scale : {1.0, 2.0}) {
    EXPECT_DOUBLE_EQ(knobOffset(row(PellSwitchStyle{globalAccent, scale}, true), scale), 7 * scale);
    EXPECT_DOUBLE_EQ(knobOffset(row(PellSwitchStyle{globalAccent, scale}, false), scale), -7 * scale);
  }
  const auto page = row(PellSwitchStyle{globalAccent}, true);
  EXPECT_EQ(track(page).frame, (platform::Rect{266, 2, 34, 20}));
  EXPECT_EQ(knob(page).center().y, track(page).center().y);
  EXPECT_EQ(page.size().height, 24);
  EXPECT_EQ(page.text("Label").frame.x, 0);
  EXPECT_NEAR(page.text("Label").center().y, track(page).center().y, 0.51);
}

TEST_F(TogglesTest, TheSwitchIsTintedWhenOnAndGreyWhenOff) {
  for (const auto& environment : {light, dark}) {
    const auto grey = primary.in(environment.appearance);
    const auto tint = globalAccent.in(environment.appearance);
    const auto faded = [](platform::Color color, double alpha) {
      color.alpha *= alpha;
      return color;
    };
    const auto on = row(PellSwitchStyle{globalAccent}, true, environment);
    EXPECT_TRUE(hasColor(track(on), faded(tint, 0.35)));
    EXPECT_TRUE(hasColor(knob(on), tint));
    EXPECT_TRUE(on.strokes().empty());
    const auto off = row(PellSwitchStyle{globalAccent}, false, environment);
    EXPECT_TRUE(hasColor(track(off), faded(grey, 0.08)));
    EXPECT_TRUE(hasColor(knob(off), faded(grey, 0.25)));
    EXPECT_TRUE(hasColor(off.strokes().at(0), faded(grey, 0.1)));
    EXPECT_EQ(knob(off).saturation, 0.65);
    EXPECT_EQ(off.text("Label").saturation, 1) << "of the switch only";
  }
}

TEST_F(TogglesTest, ATapAnywhereOnTheRowTogglesOnce) {
  auto page = row(PellSwitchStyle{globalAccent}, false);
  page.click({150, 12});
  EXPECT_EQ(written, (std::vector{true}));
  page.click("Label");
  page.click({283, 12});
  page.click({299, 0.5});
  EXPECT_EQ(written, (std::vector{true, false, true, false}));
  page.click({150, 25});
  EXPECT_EQ(written.size(), 4u) << "beneath the row";
}

TEST_F(TogglesTest, TheKnobSlidesWithASpringThatSwingsALittleOver) {
  auto page = row(PellSwitchStyle{globalAccent}, false);
  page.click({150, 12});
  page.advance(0.05);
  EXPECT_GT(knobOffset(page), -7);
  EXPECT_LT(knobOffset(page), 7);
  double furthest = 0;
  for (int frame = 0; frame < 60; ++frame) {
    page.advance(1.0 / 60);
    furthest = std::max(furthest, knobOffset(page));
  }
  EXPECT_GT(furthest, 7.1);
  EXPECT_LT(furthest, 8);
  page.advance(1);
  EXPECT_DOUBLE_EQ(knobOffset(page), 7);
  EXPECT_FALSE(page.isMoving());
}

TEST_F(TogglesTest, ASwitchThatIsTurnedBackMidwayGoesBackFromWhereItIs) {
  auto page = row(PellSwitchStyle{globalAccent}, false);
  page.click({150, 12});
  page.advance(0.1);
  const double midway = knobOffset(page);
  page.click({150, 12});
  EXPECT_NEAR(knobOffset(page), midway, 0.01);
  page.advance(2);
  EXPECT_DOUBLE_EQ(knobOffset(page), -7);
}

TEST_F(TogglesTest, ASubOptionHasABarThatGlowsWhileItIsOn) {
  auto page = row(SubOptionToggleStyle{globalAccent}, false);
  const auto bar = [&] { return page.fillsOf(3.5, 18).at(0); };
  EXPECT_TRUE(hasColor(bar(), primary.opacity(0.15).light));
  EXPECT_TRUE(bar().shadows.empty());
  EXPECT_EQ(bar().frame.x, 0);
  EXPECT_EQ(page.text("Label").frame.x, 14) << "3.5 and a gap of 10, on a whole pixel";
  EXPECT_EQ(page.size().height, 22);

  page.click({290, 11});
  EXPECT_EQ(written, (std::vector{true}));
  page.advance(0.175);
  ASSERT_EQ(bar().shadows.size(), 1u);
  EXPECT_NEAR(bar().shadows[0].color.alpha, 0.325, 0.03) << "half of the way at half of the time";
  EXPECT_TRUE(page.isMoving());
  page.advance(0.2);
  EXPECT_FALSE(page.isMoving());
  EXPECT_TRUE(hasColor(bar(), globalAccent.light));
  EXPECT_EQ(bar().shadows[0], (platform::Shadow{globalAccent.opacity(0.65).light, 5, {0, 0}}));
}

TEST_F(TogglesTest, FromRightToLeftTheSwitchIsOnTheLeftAndItsKnobGoesLeft) {
  auto page = row(PellSwitchStyle{globalAccent}, true, rightToLeft);
  EXPECT_EQ(track(page).frame.x, 0);
  EXPECT_EQ(knobOffset(page), -7);
  EXPECT_NEAR(page.text("Label").frame.right(), 300, 0.51);
  page.click({250, 12});
  EXPECT_EQ(written, (std::vector{false}));
}

}  // namespace
}  // namespace hushpane::tests

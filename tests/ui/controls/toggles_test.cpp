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
  Page row(Style style, bool isOn, const Environment& environment = {}) {
    const auto content = [this, style](Binding<bool> value) {
      const Binding<bool> noted{value.get, [this, value](bool isOn) {
                                  written.push_back(isOn);
                                  value.set(isOn);
                                }};
      return toggle(text("Label"), noted, style);
    };
    return show(Around<bool>{isOn, content}, environment, 300);
  }

  static Shown track(const Page& page) { return page.fillsOf(34, 20).at(0); }
  static Shown knob(const Page& page) { return page.fillsOf(14, 14).at(0); }
  static double knobOffset(const Page& page) { return knob(page).center().x - track(page).center().x; }
};

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

TEST_F(TogglesTest, TheKnobSlidesAndGoesBackFromWhereItIs) {
  auto page = row(PellSwitchStyle{globalAccent}, false);
  page.click({150, 12});
  page.advance(0.05);
  const double midway = knobOffset(page);
  EXPECT_GT(midway, -7);
  EXPECT_LT(midway, 7);
  EXPECT_LT(knob(page).saturation, 1);
  page.click({150, 12});
  EXPECT_NEAR(knobOffset(page), midway, 0.01);
  page.advance(2);
  EXPECT_DOUBLE_EQ(knobOffset(page), -7);
  EXPECT_FALSE(page.isMoving());
}

TEST_F(TogglesTest, ASubOptionHasABarThatGlowsWhileItIsOn) {
  auto page = row(SubOptionToggleStyle{globalAccent}, false);
  const auto bar = [&] { return page.fillsOf(3.5, 18).at(0); };
  EXPECT_FALSE(hasColor(bar(), globalAccent.light));
  EXPECT_TRUE(bar().shadows.empty());
  page.click({290, 11});
  EXPECT_EQ(written, (std::vector{true}));
  page.advance(0.175);
  ASSERT_EQ(bar().shadows.size(), 1u);
  const double halfway = bar().shadows[0].color.alpha;
  page.advance(0.2);
  EXPECT_FALSE(page.isMoving());
  EXPECT_TRUE(hasColor(bar(), globalAccent.light));
  ASSERT_EQ(bar().shadows.size(), 1u);
  EXPECT_GT(bar().shadows[0].color.alpha, halfway + 0.1) << "it grew";
}

TEST_F(TogglesTest, FromRightToLeftTheSwitchIsOnTheLeftAndItsKnobGoesLeft) {
  auto page = row(PellSwitchStyle{globalAccent}, true, rightToLeft);
  EXPECT_EQ(track(page).frame.x, 0);
  EXPECT_EQ(knobOffset(page), -7);
  EXPECT_TRUE(hasColor(knob(page), globalAccent.light));
  EXPECT_NEAR(page.text("Label").frame.right(), 300, 0.51);
  page.click({250, 12});
  EXPECT_EQ(written, (std::vector{false}));
}

}  // namespace
}  // namespace hushpane::tests

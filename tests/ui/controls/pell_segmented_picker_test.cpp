#include "ui/controls/pell_segmented_picker.h"

#include "support/page.h"
#include "ui/global_accent.h"

namespace hushpane::tests {
namespace {

using namespace declarative;

class PellSegmentedPickerTest : public PageTest {
 protected:
  std::vector<int> written;

  // Three items, 64 points wide, with the values 0, 1 and 2.
  Page picker(int selected, const Environment& environment = light) {
    const auto content = [this](Binding<int> value) {
      const Binding<int> noted{value.get, [this, value](int chosen) {
                                 written.push_back(chosen);
                                 value.set(chosen);
                               }};
      return PellSegmentedPicker<int>{noted, {{"Blur"_key, 0}, {"Dim"_key, 1}, {"Wallpaper"_key, 2}}, globalAccent, 64};
    };
    return show(Around<int>{selected, content}, environment);
  }
  static std::vector<Shown> highlights(const Page& page) { return page.fillsOf(globalAccent.light); }
};

TEST_F(PellSegmentedPickerTest, ItemsStandSideBySideInACapsule) {
  const auto page = picker(1);
  EXPECT_EQ(page.size(), (platform::Size{3 * 64 + 4, 26}));
  ASSERT_EQ(page.words(), (std::vector<std::string>{"Blur", "Dim", "Wallpaper"}));
  for (int index = 0; index < 3; ++index) {
    EXPECT_NEAR(page.texts()[index].center().x, 2 + 64 * index + 32, 0.51);
    EXPECT_NEAR(page.texts()[index].center().y, 13, 0.51);
  }
  ASSERT_EQ(highlights(page).size(), 1u);
  EXPECT_EQ(highlights(page)[0].frame, (platform::Rect{66, 2, 64, 22}));
  EXPECT_TRUE(hasColor(page.text("Dim"), platform::black));
  EXPECT_TRUE(hasColor(page.text("Blur"), primary.opacity(0.6).light));
  EXPECT_TRUE(hasColor(page.fillsOf(196, 26).at(0), primary.opacity(0.1).light));
}

TEST_F(PellSegmentedPickerTest, ASelectionThatIsNoOptionHasNoHighlight) {
  auto page = picker(7);
  EXPECT_TRUE(highlights(page).empty());
  for (const auto& title : page.texts()) EXPECT_TRUE(hasColor(title, primary.opacity(0.6).light));
  page.click("Dim");
  page.advance(2);
  EXPECT_EQ(highlights(page).size(), 1u);
}

TEST_F(PellSegmentedPickerTest, OneHighlightMovesAcrossBehindTheTitles) {
  auto page = picker(0);
  page.click("Wallpaper");
  EXPECT_EQ(written, (std::vector{2}));
  double place = 2;
  bool wasAtTheMiddle = false;
  for (int frame = 0; frame < 20; ++frame) {
    page.advance(1.0 / 60);
    ASSERT_EQ(highlights(page).size(), 1u) << "after frame " << frame;
    const auto highlight = highlights(page)[0];
    EXPECT_EQ(highlight.opacity, 1);
    EXPECT_TRUE(hasSize(highlight, 64, 22));
    EXPECT_GT(highlight.frame.x, place - 0.001);
    for (const auto& title : page.texts()) EXPECT_LT(highlight.order, title.order);
    place = highlight.frame.x;
    wasAtTheMiddle = wasAtTheMiddle || std::abs(place - 66) < 20;
  }
  EXPECT_TRUE(wasAtTheMiddle);
  page.advance(2);
  EXPECT_EQ(highlights(page)[0].frame.x, 130);
  EXPECT_TRUE(hasColor(page.text("Wallpaper"), platform::black));
  EXPECT_FALSE(page.isMoving());
}

TEST_F(PellSegmentedPickerTest, AHighlightThatIsCalledElsewhereOnItsWayTurnsWithoutAJump) {
  auto page = picker(0);
  page.click("Wallpaper");
  page.advance(0.1);
  const double place = highlights(page)[0].frame.x;
  page.click("Blur");
  ASSERT_EQ(highlights(page).size(), 1u);
  EXPECT_NEAR(highlights(page)[0].frame.x, place, 0.01);
  page.advance(0.02);
  EXPECT_GT(highlights(page)[0].frame.x, place) << "it has its speed still";
  page.advance(2);
  EXPECT_EQ(highlights(page)[0].frame.x, 2);
}

TEST_F(PellSegmentedPickerTest, EveryTapWritesAlsoOnTheSelectedItem) {
  auto page = picker(0);
  page.click({5, 13});
  page.click({64, 13});
  page.click({68, 13});
  EXPECT_EQ(written, (std::vector{0, 0, 1}));
  page.click({66, 2.5});
  EXPECT_EQ(written.size(), 3u) << "between the round ends of two items";
}

TEST_F(PellSegmentedPickerTest, ArrowsChooseTheNeighbour) {
  auto page = picker(1);
  const auto press = [&](platform::Key key) {
    page.host().keyPressed({.key = key});
    page.advance(2);
  };
  press(platform::Key::tab);
  EXPECT_EQ(page.strokes().size(), 1u);
  EXPECT_TRUE(hasSize(page.strokes()[0], 68, 24)) << "around the selected item, inside the page";
  press(platform::Key::right);
  press(platform::Key::right);
  press(platform::Key::left);
  EXPECT_EQ(written, (std::vector{2, 1}));
  EXPECT_EQ(highlights(page)[0].frame.x, 66);
}

TEST_F(PellSegmentedPickerTest, LongTitlesShrinkWithinTheirItems) {
  const auto content = [](Binding<int> value) {
    return PellSegmentedPicker<int>{
        value, {{{"Hintergrundbild"}, 0}, {{"Donaudampfschifffahrt"}, 1}}, globalAccent, 64};
  };
  const auto page = show(Around<int>{0, content});
  EXPECT_EQ(page.size().width, 132);
  for (const auto& title : page.texts()) {
    const auto& layout = *title.as<DrawnText>()->layout;
    EXPECT_EQ(layout.lineCount(), 1);
    EXPECT_LT(layout.fontScale(), 1);
    EXPECT_LE(title.frame.width, 64.1);
  }
  EXPECT_TRUE(page.texts().back().as<DrawnText>()->layout->isTruncated());
}

TEST_F(PellSegmentedPickerTest, FromRightToLeftTheFirstItemIsOnTheRight) {
  auto page = picker(0, rightToLeft);
  EXPECT_EQ(highlights(page)[0].frame.x, 130);
  page.click({30, 13});
  EXPECT_EQ(written, (std::vector{2}));
}

}  // namespace
}  // namespace hushpane::tests

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
  Page picker(int selected, const Environment& environment = {}) {
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

TEST_F(PellSegmentedPickerTest, OneHighlightMovesAcrossBehindTheTitles) {
  auto page = picker(0);
  EXPECT_EQ(page.size(), (platform::Size{3 * 64 + 4, 26}));
  EXPECT_EQ(highlights(page).at(0).frame, (platform::Rect{2, 2, 64, 22}));
  page.click("Wallpaper");
  double place = 2;
  bool wasAtTheMiddle = false;
  for (int frame = 0; frame < 20; ++frame) {
    page.advance(1.0 / 60);
    ASSERT_EQ(highlights(page).size(), 1u) << "after frame " << frame;
    const auto highlight = highlights(page)[0];
    EXPECT_EQ(highlight.opacity, 1);
    EXPECT_GT(highlight.frame.x, place - 0.001);
    for (const auto& title : page.texts()) EXPECT_LT(highlight.order, title.order);
    place = highlight.frame.x;
    wasAtTheMiddle = wasAtTheMiddle || std::abs(place - 66) < 20;
  }
  EXPECT_TRUE(wasAtTheMiddle);
  page.advance(2);
  EXPECT_EQ(highlights(page)[0].frame.x, 130);
  EXPECT_FALSE(page.isMoving());
}

TEST_F(PellSegmentedPickerTest, EveryTapWritesAlsoOnTheSelectedItem) {
  auto page = picker(0);
  for (const double x : {5, 64, 68}) page.click({x, 13});
  EXPECT_EQ(written, (std::vector{0, 0, 1}));
  page.click({66, 2.5});
  EXPECT_EQ(written.size(), 3u) << "between the round ends of two items";
}

TEST_F(PellSegmentedPickerTest, ArrowsChooseTheNeighbour) {
  auto page = picker(1);
  page.host().keyPressed({.key = platform::Key::tab});
  page.advance(2);
  ASSERT_EQ(page.strokes().size(), 1u);
  EXPECT_TRUE(hasSize(page.strokes()[0], 68, 24)) << "around the selected item, inside the page";
  for (const auto key : {platform::Key::right, platform::Key::right, platform::Key::left}) {
    page.host().keyPressed({.key = key});
    page.advance(2);
  }
  EXPECT_EQ(written, (std::vector{2, 1}));
}

TEST_F(PellSegmentedPickerTest, FromRightToLeftTheFirstItemIsOnTheRight) {
  auto page = picker(0, rightToLeft);
  EXPECT_EQ(highlights(page)[0].frame.x, 130);
  page.click({30, 13});
  EXPECT_EQ(written, (std::vector{2}));
}

}  // namespace
}  // namespace hushpane::tests

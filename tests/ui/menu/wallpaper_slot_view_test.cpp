#include "ui/menu/wallpaper_slot_view.h"

#include "support/page.h"
#include "ui/global_accent.h"

namespace hushpane::tests {
namespace {

using namespace declarative;

class WallpaperSlotViewTest : public PageTest {
 protected:
  int taps = 0, removals = 0;

  Page slot(bool isSelected, bool canRemove, const Environment& environment = light) {
    const std::function<void()> remove = canRemove ? [this] { ++removals; } : std::function<void()>();
    const auto image = std::make_shared<platform::Image>(platform::Image{2, 1, {0xff102030, 0xff102030}});
    return show(WallpaperSlotView{isSelected, [this] { ++taps; }, remove, picture(image), globalAccent}, environment,
                154);
  }
  static std::vector<Shown> badge(const Page& page) { return page.fillsOf(18, 18); }
};

TEST_F(WallpaperSlotViewTest, TheTileIs90HighWithThePictureClippedToItsCorners) {
  for (const bool isSelected : {true, false}) {
    const auto page = slot(isSelected, false);
    const auto border = page.strokes().at(0);
    EXPECT_EQ(page.size(), (platform::Size{154, 90}));
    EXPECT_EQ(page.images().at(0).frame, (platform::Rect{0, 0, 154, 90}));
    EXPECT_GT(border.order, page.images().at(0).order);
    EXPECT_TRUE(hasColor(border, isSelected ? globalAccent.opacity(0.8).light : primary.opacity(0.1).light));
    EXPECT_EQ(border.as<StrokedPath>()->stroke.width, isSelected ? 1.8 : 1);
  }
}

TEST_F(WallpaperSlotViewTest, TheRemoveButtonIsThereUnderThePointerOnly) {
  auto page = slot(true, true);
  EXPECT_TRUE(badge(page).empty());
  page.hover({60, 60});
  page.advance(0.06);
  ASSERT_EQ(badge(page).size(), 0u) << "it is growing";
  page.advance(0.1);
  ASSERT_EQ(badge(page).size(), 1u);
  EXPECT_EQ(badge(page)[0].frame, (platform::Rect{131, 5, 18, 18}));
  EXPECT_TRUE(hasColor(badge(page)[0], windowBackground.opacity(0.85).light));

  page.click({140, 14});
  EXPECT_EQ(removals, 1);
  EXPECT_EQ(taps, 0);
  page.leave();
  page.advance(0.05);
  const auto fading = page.fillsOf(windowBackground.opacity(0.85).light);
  ASSERT_EQ(fading.size(), 1u);
  EXPECT_LT(fading[0].opacity, 1);
  EXPECT_LT(fading[0].frame.width, 18);
  EXPECT_GT(fading[0].order, page.images().at(0).order) << "it goes in front of the tile";
  EXPECT_NEAR(fading[0].frame.right(), 149, 2) << "towards its corner";
  page.advance(0.1);
  EXPECT_TRUE(page.fillsOf(windowBackground.opacity(0.85).light).empty());
}

TEST_F(WallpaperSlotViewTest, WithoutAnActionThereIsNoRemoveButton) {
  auto page = slot(false, false);
  page.hover({60, 60});
  page.advance(0.2);
  EXPECT_TRUE(badge(page).empty());
  page.click({140, 14});
  EXPECT_EQ(taps, 1);
}

TEST_F(WallpaperSlotViewTest, FromRightToLeftTheRemoveButtonIsOnTheLeft) {
  auto page = slot(true, true, rightToLeft);
  page.hover({60, 60});
  page.advance(0.2);
  EXPECT_EQ(badge(page).at(0).frame, (platform::Rect{5, 5, 18, 18}));
  page.click({14, 14});
  EXPECT_EQ(removals, 1);
}

}  // namespace
}  // namespace hushpane::tests

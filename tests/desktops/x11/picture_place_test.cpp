#include "desktops/x11/picture_place.h"

#include <gtest/gtest.h>

namespace hushpane::x11 {
namespace {

using platform::Rect;
using session::PicturePlacement;

TEST(PictureOfTheDesktop, LiesAsItsPlacementSays) {
  constexpr PixelRect screen{1000, 200, 1600, 800}, root{0, 0, 3000, 1200};
  const auto place = [&](PicturePlacement placement, double scale = 1) {
    return placeOfPicture(placement, {400, 400}, screen, root, scale);
  };
  EXPECT_EQ(place(PicturePlacement::zoomed), (Rect{1000, -200, 1600, 1600}));
  EXPECT_EQ(place(PicturePlacement::scaled), (Rect{1400, 200, 800, 800}));
  EXPECT_EQ(place(PicturePlacement::stretched), (Rect{1000, 200, 1600, 800}));
  EXPECT_EQ(place(PicturePlacement::centered), (Rect{1600, 400, 400, 400}));
  EXPECT_EQ(place(PicturePlacement::centered, 2), (Rect{1400, 200, 800, 800}));
  EXPECT_EQ(place(PicturePlacement::tiled), (Rect{1300, 400, 400, 400})) << "around the middle of all screens";
  EXPECT_EQ(place(PicturePlacement::spanned), (Rect{0, 0, 3000, 1200}));
}

}  // namespace
}  // namespace hushpane::x11

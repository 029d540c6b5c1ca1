#include <gdk-pixbuf/gdk-pixbuf.h>

#include "tests/x11/both_ways.h"
#include "tests/x11/root_picture.h"
#include "tests/x11/tinted.h"

namespace hushpane::x11_tests {
namespace {

class CleanDesktop : public BothWays {
 protected:
  // How far the colour of a spot is from grey.
  int colorfulness(Point point) const {
    const Pixel pixel = x().pixel(point);
    const auto [least, most] = std::minmax({pixel.red(), pixel.green(), pixel.blue()});
    return most - least;
  }
};
HUSHPANE_RUN_BOTH_WAYS(CleanDesktop);

TEST_P(CleanDesktop, BlurSoftensAndDarkensTheDesktopPictureOnly) {
  constexpr int edge = 600, reach = 60;
  setRootPicture(display(), edge, {0xffffff}, {0x000000});
  chooseMode("cleanDesktop", "blur");
  startHushpane();
  const auto brightness = [this](int column) { return x().pixel({double(column), leftSpot.y}).brightness(); };
  ASSERT_TRUE(shows({edge - 3 * reach, leftSpot.y}, tinted({0xffffff})));
  ASSERT_TRUE(shows({edge + 3 * reach, leftSpot.y}, tinted({0x000000})));
  const int left = brightness(edge - 3 * reach), right = brightness(edge + 3 * reach);
  int last = left;
  for (int column = edge - reach; column <= edge + reach; column += 4) {
    EXPECT_LE(brightness(column), last + 3) << "the edge is not smooth at " << column;
    EXPECT_GE(brightness(column), last - (left - right) / 4) << "the edge is still sharp at " << column;
    last = brightness(column);
  }
  EXPECT_TRUE(shows(green_->spot(), green_->color()));
  shot("clean-blur-" + wayName());
}

TEST_P(CleanDesktop, BlursTransparentWindowsAsTheyAreSeen) {
  chooseMode("cleanDesktop", "blur");
  startHushpane();
  // Such as those that hold icons alone. Without a compositor they hide what lies behind.
  const auto icons = openWindow({{0, 0, 1920, 1080}, {0}, "_NET_WM_WINDOW_TYPE_DESKTOP", false, 0});
  EXPECT_TRUE(shows(leftSpot, tinted(hasCompositor() ? background : Pixel{0})));
  EXPECT_TRUE(shows(red_->spot(), red_->color()));
}

TEST_P(CleanDesktop, WallpaperFillsEveryDisplay) {
  GdkPixbuf* picture = gdk_pixbuf_new_from_file(HUSHPANE_SOURCE_DIR "/resources/HushpaneDefaultWallpaper.png", nullptr);
  ASSERT_TRUE(picture) << "the default wallpaper is missing";
  const int width = gdk_pixbuf_get_width(picture), height = gdk_pixbuf_get_height(picture);
  const auto wallpaper = [&](Point point, const Rect& monitor) {
    const double scale = std::max(monitor.width / width, monitor.height / height);
    const int column = int((point.x - center(monitor).x) / scale + width / 2.0);
    const int row = int((point.y - center(monitor).y) / scale + height / 2.0);
    const guchar* bytes = gdk_pixbuf_get_pixels(picture) + row * gdk_pixbuf_get_rowstride(picture) +
                          column * gdk_pixbuf_get_n_channels(picture);
    return Pixel{static_cast<std::uint32_t>(bytes[0] << 16 | bytes[1] << 8 | bytes[2])};
  };
  chooseMode("cleanDesktop", "wallpaper");
  startHushpane();
  for (const Rect& monitor : {leftMonitor, rightMonitor}) {
    for (const Point part : {Point{0.02, 0.02}, {0.98, 0.02}, {0.5, 0.75}, {0.02, 0.98}, {0.98, 0.98}}) {
      const Point point{monitor.x + part.x * monitor.width, monitor.y + part.y * monitor.height};
      Pixel seen;
      EXPECT_TRUE(waitUntil([&] { return isNear(seen = x().pixel(point), wallpaper(point, monitor), 8); }))
          << seen << " instead of " << wallpaper(point, monitor) << " at " << point.x << ',' << point.y;
    }
  }
  EXPECT_TRUE(shows(red_->spot(), red_->color()));
  shot("clean-wallpaper-" + wayName());
  g_object_unref(picture);
}

TEST_P(CleanDesktop, FollowsTheDesktopPicture) {
  chooseMode("cleanDesktop");
  startHushpane();
  EXPECT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  setRootPicture(display(), 1000, {0xe0d0c0}, {0x405060});
  EXPECT_TRUE(shows(leftSpot, dimmed({0xe0d0c0}, balanced)));
  EXPECT_TRUE(shows(rightSpot, dimmed({0x405060}, balanced)));
}

TEST_P(CleanDesktop, GradientTintsTheBlurAndMoves) {
  chooseMode("cleanDesktop", "blur", {{"hushpane.ambientGradientEnabled", xml(true)}});
  startHushpane();
  EXPECT_TRUE(waitUntil([this] { return colorfulness(leftSpot) > 60 && colorfulness(rightSpot) > 30; }));
  EXPECT_TRUE(shows(red_->spot(), red_->color()));
  const auto before = x().capture();
  EXPECT_TRUE(waitUntil([&] { return !(x().capture() == before); })) << "it stands still";
  keyboard("keydown", "alt");
  EXPECT_TRUE(looksUntouched());
  keyboard("keyup", "alt");
  EXPECT_TRUE(waitUntil([this] { return colorfulness(leftSpot) > 60; }));
  keyboard("key", "ctrl+alt+s");
  EXPECT_TRUE(looksUntouched());
}

}  // namespace
}  // namespace hushpane::x11_tests

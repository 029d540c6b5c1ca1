#include <gdk-pixbuf/gdk-pixbuf.h>

#include "desktops/shared/file_bookmarks.h"
#include "tests/x11/both_ways.h"

namespace hushpane::x11_tests {
namespace {

constexpr Pixel orange{0xe08020};

class Pictures : public BothWays {
 protected:
  // A picture of one colour in the home folder.
  std::filesystem::path paint(int width, int height, Pixel color) const {
    const auto file = logs() / "picture.png";
    auto* pixbuf = gdk_pixbuf_new(GDK_COLORSPACE_RGB, false, 8, width, height);
    gdk_pixbuf_fill(pixbuf, color.value << 8 | 0xff);
    EXPECT_TRUE(gdk_pixbuf_save(pixbuf, file.c_str(), "png", nullptr, nullptr));
    g_object_unref(pixbuf);
    return file;
  }
  SettingsValues customWallpaper(const std::filesystem::path& file) const {
    const auto bookmark = desktops::FileBookmarks().create(file).value();
    char* text = g_base64_encode(bookmark.data(), bookmark.size());
    SettingsValues values{{"hushpane.ambientWallpaperSource", xml("custom")},
                          {"hushpane.customWallpaperBookmarkData", "<data>" + std::string(text) + "</data>"}};
    g_free(text);
    return values;
  }
  // How far the colour of a spot is from grey.
  int colorfulness(Point point) const {
    const Pixel pixel = x().pixel(point);
    const auto [least, most] = std::minmax({pixel.red(), pixel.green(), pixel.blue()});
    return most - least;
  }
};
HUSHPANE_RUN_BOTH_WAYS(Pictures);

TEST_P(Pictures, CustomWallpaperLiesBeneathTheWindowsOfBothDisplays) {
  chooseMode("cleanDesktop", "wallpaper", customWallpaper(paint(3000, 500, orange)));
  startHushpane();
  EXPECT_TRUE(shows(leftSpot, orange));
  EXPECT_TRUE(shows(rightSpot, orange));
  EXPECT_TRUE(shows(red_->spot(), red_->color()));
  keyboard("keydown", "alt");
  EXPECT_TRUE(looksUntouched());
  keyboard("keyup", "alt");
  EXPECT_TRUE(shows(leftSpot, orange));
}

TEST_P(Pictures, PictureThatCannotBeReadLeavesTheDefaultOne) {
  const auto file = paint(10, 10, orange);
  chooseMode("cleanDesktop", "wallpaper", customWallpaper(file));
  std::ofstream(file) << "no picture any more";
  startHushpane();
  EXPECT_TRUE(waitUntil([this] { return !isNear(x().pixel(leftSpot), background, 10); }));
  const auto settled = settledPicture();
  EXPECT_FALSE(isNear(settled.at(int(leftSpot.x), int(leftSpot.y)), orange, 40));
  EXPECT_EQ(stopHushpane(), 0);
  EXPECT_EQ(hushpane().output() + hushpane().errors(), "");
}

TEST_P(Pictures, GradientTintsTheBlurOfCleanDesktopAndMoves) {
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

#include <gdk-pixbuf/gdk-pixbuf.h>

#include "support/background_schemas.h"
#include "tests/x11/desktop.h"
#include "tests/x11/server_pixmaps.h"
#include "tests/x11/tinted.h"

namespace hushpane::x11_tests {
namespace {

constexpr Pixel red{0xd02020}, green{0x20c040}, blue{0x2040d0}, yellow{0xe0c020};

// A desktop whose compositor paints the background that its settings describe, and publishes no pixmap.
class PaintedBackground : public Desktop {
 protected:
  PaintedBackground() {
    startCompositor();
    xcb_delete_property(x().get(), x().root(), x().atom("_XROOTPMAP_ID"));
    writeBackgroundSchemas(schemas_.path());
    environment()["GSETTINGS_SCHEMA_DIR"] = schemas_.path();
    environment()["GSETTINGS_BACKEND"] = "keyfile";
    environment()["XDG_CURRENT_DESKTOP"] = "GNOME";
    std::filesystem::create_directories(settingsFile().parent_path());
  }

  // A picture in two colours, left and right of its middle.
  std::string picture(const std::string& name, Pixel left, Pixel right) const {
    const auto file = schemas_ / (name + ".png");
    auto* pixbuf = gdk_pixbuf_new(GDK_COLORSPACE_RGB, false, 8, 400, 300);
    auto* half = gdk_pixbuf_new_subpixbuf(pixbuf, 200, 0, 200, 300);
    gdk_pixbuf_fill(pixbuf, left.value << 8 | 0xff);
    gdk_pixbuf_fill(half, right.value << 8 | 0xff);
    EXPECT_TRUE(gdk_pixbuf_save(pixbuf, file.c_str(), "png", nullptr, nullptr));
    g_object_unref(half);
    g_object_unref(pixbuf);
    return "picture-uri='file://" + file.string() + "'\n";
  }
  // As a settings program does it, in one step.
  void describe(const std::string& settings) const {
    const auto fresh = settingsFile().string() + ".new";
    writeFile(fresh, "[org/gnome/desktop/background]\n" + settings);
    std::filesystem::rename(fresh, settingsFile());
  }
  // What the spots of the background show, blurred and tinted.
  testing::AssertionResult isBlurOf(const std::vector<std::pair<Point, Pixel>>& spots) const {
    for (const auto& [point, pixel] : spots)
      if (auto result = shows(point, tinted(pixel)); !result) return result;
    return testing::AssertionSuccess();
  }

  static constexpr Point left1{60, 900}, right1{1060, 900}, left2{1180, 900}, right2{1860, 900};

 private:
  std::filesystem::path settingsFile() const {
    return std::filesystem::path(environment().at("XDG_CONFIG_HOME")) / "glib-2.0/settings/keyfile";
  }
  TemporaryFolder schemas_;
};

TEST_F(PaintedBackground, IsBlurredAsTheSettingsDescribeItAndFollowsThem) {
  const auto first = picture("first", red, green), second = picture("second", blue, yellow);
  describe(first);
  chooseMode("cleanDesktop", "blur");
  startHushpane();
  EXPECT_TRUE(isBlurOf({{left1, red}, {right1, green}, {left2, red}, {right2, green}})) << "on each display";
  shot("painted-background");
  describe(second);
  EXPECT_TRUE(isBlurOf({{left1, blue}, {right1, yellow}, {left2, blue}, {right2, yellow}}));
  describe(second + "picture-options='spanned'\n");
  EXPECT_TRUE(isBlurOf({{left1, blue}, {right1, yellow}, {left2, yellow}, {right2, yellow}})) << "over both";
  describe(first + "picture-options='wallpaper'\n");
  EXPECT_TRUE(isBlurOf({{{860, 900}, red}, {{1060, 900}, green}, {{1260, 900}, red}, {{1460, 900}, green}}));
  shot("painted-background-tiled");
  describe(first + "picture-options='centered'\n");
  EXPECT_TRUE(isBlurOf({{left1, {0}}, {right1, {0}}, {left2, {0}}, {right2, {0}}}));
  describe(
      "picture-options='none'\nprimary-color='#d02020'\nsecondary-color='#2040d0'\n"
      "color-shading-type='horizontal'\n");
  EXPECT_TRUE(isBlurOf({{left1, red}, {right1, blue}, {left2, red}, {right2, blue}}));
  shot("painted-background-shaded");
  keyboard("key", "ctrl+alt+s");
  const auto pixmaps = [this] { return pixmapsOf(x(), hushpanePid()); };
  EXPECT_TRUE(waitUntil([&] { return pixmaps() == 0; })) << pixmaps() << " pixmaps";
}

}  // namespace
}  // namespace hushpane::x11_tests

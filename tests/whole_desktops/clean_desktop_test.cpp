#include "tests/whole_desktops/whole_desktop.h"

namespace hushpane::x11_tests {
namespace {

constexpr Pixel upper = DesktopSession::upperColor, lower = DesktopSession::lowerColor;

class CleanDesktopIn : public WholeDesktop {
 protected:
  // Whether the blurred desktop, and nothing else, is around the windows.
  testing::AssertionResult isBlurred(const std::vector<const Application*>& among, Pixel above = upper,
                                     Pixel below = lower) const {
    return showsDesktop(tinted(above), tinted(below), among);
  }
  void everythingBack() const {
    for (const Application* application : applications().all()) activate(*application);
    activate(applications().terminal);
  }
  void gradient();
  void ownPicture();
  void pictureChanges();
};
HUSHPANE_RUN_IN_ALL_DESKTOPS(CleanDesktopIn);

// In the hue of the desktop picture, which is an orange.
void CleanDesktopIn::gradient() {
  use("cleanDesktop", "blur", {{"hushpane.ambientGradientEnabled", xml(true)}});
  wait(1500ms);
  int red = 0, blue = 0;
  for (const Point spot : DesktopSession::bareSpots) {
    const Pixel seen = x().pixel(spot);
    EXPECT_FALSE(isNear(seen, tinted(spot.y < DesktopSession::edge ? upper : lower), 6)) << "no gradient";
    red += seen.red(), blue += seen.blue();
  }
  EXPECT_GT(red, blue) << "it has another hue than the picture";
}

void CleanDesktopIn::ownPicture() {
  constexpr Pixel magenta{0xc020a0};
  const std::filesystem::path file = session().home() / "own.png";
  savePng({100, 100, std::vector<std::uint32_t>(100 * 100, magenta.value)}, file);
  session().shell("printf %s \"$1\" | base64 -w0 >\"$1.base64\"", file);
  use("cleanDesktop", "wallpaper",
      {{"hushpane.ambientWallpaperSource", xml("custom")},
       {"hushpane.customWallpaperBookmarkData", "<data>" + contents(file.string() + ".base64") + "</data>"}});
  EXPECT_TRUE(showsDesktop(magenta, magenta, applications().all()));
}

void CleanDesktopIn::pictureChanges() {
  constexpr Pixel green{0x40a060}, blue{0x3060a0};
  session().choosePicture(green, blue);
  EXPECT_TRUE(isBlurred(applications().all(), green, blue));
  picture();
  session().choosePicture(upper, lower);
  EXPECT_TRUE(isBlurred(applications().all()));
}

TEST_P(CleanDesktopIn, EveryDesktop) {
  start();
  const auto all = applications().all();
  runCase("clean desktop, dim", [&] {
    use("cleanDesktop");
    EXPECT_TRUE(seesClear(all));
    EXPECT_TRUE(barsAreClear());
  });
  runCase("clean desktop, own picture", [&] { ownPicture(); });
  runCase("clean desktop, gradient", [&] { gradient(); });
  runCase("clean desktop, blur", [&] {
    use("cleanDesktop", "blur");
    EXPECT_TRUE(isBlurred(all));
  });
  runCase("blur, picture changed", [&] { pictureChanges(); });
  runCase("blur, minimised windows", [&] {
    for (const Application* application : all) session().minimise(application->window());
    EXPECT_TRUE(isBlurred({}));
    picture();
    everythingBack();
    EXPECT_TRUE(isBlurred(all));
  });
  runCase("blur, second workspace", [&] {
    session().toWorkspace(1);
    EXPECT_TRUE(isBlurred({}));
    picture();
    session().toWorkspace(0);
    everythingBack();
    EXPECT_TRUE(isBlurred(all));
  });
  runCase("blur, show desktop", [&] {
    session().showDesktop(true);
    EXPECT_TRUE(isBlurred({}));
    picture();
    session().showDesktop(false);
    everythingBack();
    EXPECT_TRUE(isBlurred(all));
  });
}

}  // namespace
}  // namespace hushpane::x11_tests

#include "desktops/x11/display_id.h"
#include "tests/x11/both_ways.h"

namespace hushpane::x11_tests {
namespace {

class Displays : public BothWays {
 protected:
  // Settings of the focus mode that disable the right display and hold one more entry.
  void disableRightDisplay(const std::string& otherEntry) {
    const std::string id = std::to_string(x11::displayIdOf("RIGHT", {}));
    chooseMode("focus", "dim",
               {{"hushpane.displayEnablement", "<dict><key>" + id + "</key><false/>" + otherEntry + "</dict>"}});
  }
  void setResources(const std::string& text) {
    const TemporaryFolder folder;
    writeFile(folder / "resources", text + "\n");
    runTool({"xrdb", "-nocpp", "-load", (folder / "resources").string()});
  }
  // A window manager moves the windows of a monitor that goes; then the picture is another one.
  void closeBlue() {
    blue_.reset();
    ASSERT_TRUE(shows({1310, 500}, background));
  }
};
HUSHPANE_RUN_BOTH_WAYS(Displays);

TEST_P(Displays, MonitorThatGoesLosesItsCoverAndGetsItBackWhole) {
  closeBlue();
  chooseMode("focus");
  startHushpane();
  ASSERT_TRUE(showsDimExcept({red_->frameBounds()}));
  unplugRightMonitor();
  EXPECT_TRUE(showsDimExcept({red_->frameBounds(), rightMonitor}));
  ScreenWatch watch(display(), {leftSpot});
  plugInRightMonitor();
  EXPECT_TRUE(showsDimExcept({red_->frameBounds()}));
  for (const auto& look : watch.stop()) ASSERT_TRUE(isNear(look.pixels[0], dimmed(background, balanced)));
}

TEST_P(Displays, MonitorThatChangesItsSizeIsCoveredAsItIs) {
  closeBlue();
  chooseMode("focus");
  startHushpane();
  ASSERT_TRUE(showsDimExcept({red_->frameBounds()}));
  unplugRightMonitor();
  runTool({"xrandr", "--setmonitor", "RIGHT", "500/210x700/290+1420+100", "none"});
  const Rect beside{1120, 0, 300, 1080}, above{1420, 0, 500, 100}, below{1420, 800, 500, 280};
  EXPECT_TRUE(showsDimExcept({red_->frameBounds(), beside, above, below}));
}

TEST_P(Displays, CoversStayWholeWhileTheScaleOfTheDesktopChanges) {
  chooseMode("focus");
  startHushpane();
  ASSERT_TRUE(showsDimExcept({red_->frameBounds()}));
  for (const char* dpi : {"192", "144", "96"}) {
    // Covers of another size would overlap, or leave a display bare.
    setResources(std::string("Xft.dpi: ") + dpi);
    EXPECT_TRUE(holdsFor(500ms, [] { return true; }) && showsDimExcept({red_->frameBounds()})) << dpi;
  }
}

TEST_P(Displays, DisabledDisplayStaysAsItIsThroughEveryChange) {
  disableRightDisplay("<key>abc</key><true/>");
  startHushpane();
  EXPECT_TRUE(showsDimExcept({red_->frameBounds(), rightMonitor}));
  shot("display-disabled-" + wayName());
  ScreenWatch watch(display(), {rightSpot, blue_->spot()});
  keyboard("keydown", "alt");
  EXPECT_TRUE(looksUntouched());
  keyboard("keyup", "alt");
  EXPECT_TRUE(showsDimExcept({red_->frameBounds(), rightMonitor}));
  activate(green_->window());
  EXPECT_TRUE(shows(red_->spot(), dimmed(red_->color(), balanced)));
  activate(red_->window());
  EXPECT_TRUE(showsDimExcept({red_->frameBounds(), rightMonitor}));
  for (const auto& look : watch.stop()) {
    ASSERT_EQ(look.pixels[0], background);
    ASSERT_EQ(look.pixels[1], blue_->color());
  }
}

TEST_P(Displays, OneBadValueEnablesEveryDisplay) {
  disableRightDisplay("<key>7</key><string>no</string>");
  startHushpane();
  EXPECT_TRUE(showsDimExcept({red_->frameBounds()}));
}

}  // namespace
}  // namespace hushpane::x11_tests

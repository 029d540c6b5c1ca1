#include "tests/x11/both_ways.h"

namespace hushpane::x11_tests {
namespace {

class Displays : public BothWays {
 protected:
  void setResources(const std::string& text) {
    const TemporaryFolder folder;
    writeFile(folder / "resources", text + "\n");
    runTool({"xrdb", "-nocpp", "-load", (folder / "resources").string()});
  }
};
HUSHPANE_RUN_BOTH_WAYS(Displays);

TEST_P(Displays, MonitorThatChangesItsSizeIsCoveredAsItIs) {
  // A window manager moves the windows of a monitor that goes; then the picture is another one.
  blue_.reset();
  ASSERT_TRUE(shows({1310, 500}, background));
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

}  // namespace
}  // namespace hushpane::x11_tests

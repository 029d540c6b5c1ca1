#include "desktops/x11/display_id.h"
#include "tests/managers/managed_desktop.h"

namespace hushpane::x11_tests {
namespace {

class DisplaysUnder : public ManagedDesktop {
 protected:
  void disabledDisplay();
  void pluggedInLater();
};
HUSHPANE_RUN_UNDER_ALL_WINDOW_MANAGERS(DisplaysUnder);

// Whatever happens on the left display, the right one stays as it is, to the pixel.
void DisplaysUnder::disabledDisplay() {
  const auto compare = [&](const char* when) {
    int different = 0;
    const Picture now = x().capture();
    for (int row = 0; row < now.height; ++row)
      for (int column = int(rightMonitor.x); column < now.width; ++column)
        different += now.at(column, row) != untouched().at(column, row);
    EXPECT_EQ(different, 0) << "pixels, " << when;
  };
  start("focus", {{"hushpane.displayEnablement",
                   "<dict><key>" + std::to_string(x11::displayIdOf("RIGHT", {})) + "</key><false/></dict>"}});
  ScreenWatch watch(display(), {rightSpot, blue_->spot()});
  EXPECT_TRUE(sees({spotOf(*red_), spotOf(*blue_), right()}, {left(), spotOf(*green_)}));
  compare("covered");
  picture();
  keyboard("keydown", "alt");
  EXPECT_TRUE(sees({left(), spotOf(*green_)}, {}));
  compare("lifted");
  keyboard("keyup", "alt");
  EXPECT_TRUE(sees({}, {left(), spotOf(*green_)}));
  activate(green_->window());
  EXPECT_TRUE(sees({spotOf(*green_)}, {left(), spotOf(*red_)}));
  activate(red_->window());
  EXPECT_TRUE(sees({spotOf(*red_)}, {left(), spotOf(*green_)}));
  compare("after switches");
  int wrong = 0;
  for (const auto& look : watch.stop()) wrong += look.pixels[0] != right().color || look.pixels[1] != blue_->color();
  EXPECT_EQ(wrong, 0) << "looks";
}

// Window managers move the windows of a display that goes, so only the background tells.
void DisplaysUnder::pluggedInLater() {
  stopHushpane();
  unplugRightMonitor();
  wait(200ms);
  start("focus");
  const auto corner = [this](double column, double row) {
    return Spot{{column, row}, untouched().at(int(column), int(row))};
  };
  const std::vector<Spot> wholeRight{corner(1125, 1075), corner(1915, 1075), right()};
  EXPECT_TRUE(sees(wholeRight, {left()}));
  plugInRightMonitor();
  std::vector<Spot> everything = wholeRight;
  everything.push_back(left());
  EXPECT_TRUE(sees({}, everything));
  picture();
}

TEST_P(DisplaysUnder, EveryWindowManager) {
  runCase("one display disabled", [this] { disabledDisplay(); });
  runCase("display plugged in later", [this] { pluggedInLater(); });
}

}  // namespace
}  // namespace hushpane::x11_tests

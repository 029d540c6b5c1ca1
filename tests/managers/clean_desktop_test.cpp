#include "tests/managers/managed_desktop.h"

namespace hushpane::x11_tests {
namespace {

class CleanDesktopUnder : public ManagedDesktop {
 protected:
  testing::AssertionResult isClean() const {
    return sees({spotOf(*red_), spotOf(*green_), spotOf(*blue_)}, {left(), right()});
  }
  void desktopWindow();
};
HUSHPANE_RUN_UNDER_ALL_WINDOW_MANAGERS(CleanDesktopUnder);

void CleanDesktopUnder::desktopWindow() {
  constexpr Pixel olive{0x808040};
  const auto icons = openWindow({{0, 0, 1920, 1080}, olive, "_NET_WM_WINDOW_TYPE_DESKTOP"});
  std::vector<Spot> desktop{{leftSpot, olive}}, windows{spotOf(*red_), spotOf(*green_)};
  if (icons->bounds().contains(rightSpot)) desktop.push_back({rightSpot, olive});  // some allow one monitor only
  EXPECT_TRUE(sees(windows, desktop));
  for (const Terminal* terminal : {green_.get(), red_.get()}) {
    activate(terminal->window());
    EXPECT_TRUE(sees(windows, desktop)) << "after another window came to the front";
  }
  picture();
  click(leftSpot);
  EXPECT_TRUE(waitUntil([&] { return icons->clicks() == 1; }, 2s)) << "the click did not reach the desktop";
  keyboard("keydown", "alt");
  EXPECT_TRUE(sees({{leftSpot, olive}}, {})) << "while the key is held";
  keyboard("keyup", "alt");
  EXPECT_TRUE(sees(windows, desktop)) << "after the key was held";
  click(leftSpot);
  EXPECT_TRUE(waitUntil([&] { return icons->clicks() == 2; }, 2s)) << "a click after the cover was lifted";
}

TEST_P(CleanDesktopUnder, EveryWindowManager) {
  start("cleanDesktop");
  runCase("clean desktop", [this] {
    EXPECT_TRUE(isCoveredBut({red_.get(), green_.get(), blue_.get()}));
    picture();
    activate(green_->window());
    EXPECT_TRUE(isClean());
    activate(red_->window());
    EXPECT_TRUE(isClean());
  });
  runCase("idle", [this] {
    wait(300ms);
    EXPECT_LE(wakeUpsPerSecond(), 1);
    EXPECT_EQ(redrawsPerSecond(), 0);
  });
  runCase("minimised windows", [this] {
    minimise(red_->window());
    EXPECT_TRUE(sees({spotOf(*green_)}, {left(), bareBeneath(*red_)}));
    picture();
    activate(red_->window());
    EXPECT_TRUE(isClean());
  });
  runCase("desktop window", [this] { desktopWindow(); });
  runCase("second workspace", [this] {
    toWorkspace(1);
    EXPECT_TRUE(sees({}, {left(), bareBeneath(*red_), bareBeneath(*green_)}));
    picture();
    toWorkspace(0);
    EXPECT_TRUE(isClean());
  });
  runCase("show desktop", [this] {
    showDesktop(true);
    EXPECT_TRUE(sees({}, {left(), right(), bareBeneath(*red_), bareBeneath(*green_)}));
    picture();
    showDesktop(false);
    activate(red_->window());
    EXPECT_TRUE(isClean());
  });
}

}  // namespace
}  // namespace hushpane::x11_tests

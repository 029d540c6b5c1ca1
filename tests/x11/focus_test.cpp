#include "tests/x11/both_ways.h"

namespace hushpane::x11_tests {
namespace {

class Focus : public BothWays {};
HUSHPANE_RUN_BOTH_WAYS(Focus);

constexpr Pixel white{0xf0f0f0};

TEST_P(Focus, BlursTheOtherWindows) {
  chooseMode("focus", "blur");
  startHushpane();
  // Across the lower edge of the green window, from the window to the background.
  const Rect frame = green_->frameBounds();
  const auto green = [&](double row) { return x().pixel({green_->spot().x, row}).green(); };
  EXPECT_TRUE(waitUntil([&] {
    return green(frame.bottom() - 40) > green(frame.bottom()) + 1 &&
           green(frame.bottom()) > green(frame.bottom() + 40) + 1;
  }));
  EXPECT_TRUE(shows(red_->spot(), red_->color()));
  shot("focus-blur-" + wayName());
}

TEST_P(Focus, FillingAMonitorFreesThatMonitorOnly) {
  chooseMode("focus");
  startHushpane();
  ASSERT_TRUE(showsDimExcept({red_->frameBounds()}));
  const Rect& right = rightMonitor;
  const Point margin{right.x + 2, 1078};
  struct Case {
    const char* what;
    Rect bounds;
    bool fills;
    bool isFrontWindow;  // a window of the monitor's size does not count, so the covers stay beneath the one before
    std::uint32_t shadow = 0;  // that the application draws inside the window
  };
  for (const Case& now : {Case{"within 12 points of its size", {1125, 5, 790, 1069}, true, false},
                          Case{"93 % of its area", {1120, 0, 800, 1005}, true, true},
                          Case{"91 % of its area", {1120, 0, 800, 983}, false, true},
                          Case{"93 % with its shadow", {1120, 0, 800, 1005}, false, true, 20}}) {
    SCOPED_TRACE(now.what);
    // Without the window of the case before, so that none of its fading is seen below.
    EXPECT_TRUE(shows(margin, dimmed(background, balanced)));
    const auto window = openWindow({now.bounds, white});
    x().setNumbers(window->window(), "_GTK_FRAME_EXTENTS", "CARDINAL",
                   {now.shadow, now.shadow, now.shadow, now.shadow});
    activate(window->window());
    EXPECT_TRUE(shows(margin, now.fills ? background : dimmed(background, balanced)));
    EXPECT_TRUE(keeps(margin, now.fills ? background : dimmed(background, balanced), 400ms));
    EXPECT_TRUE(shows(leftSpot, dimmed(background, balanced)));
    EXPECT_TRUE(shows(red_->spot(), dimmed(red_->color(), now.isFrontWindow ? balanced : 0)));
    EXPECT_TRUE(shows(window->spot(), white));
  }
}

// A window manager that raises while the program restacks: whatever crosses on the way, the end is right.
TEST_P(Focus, CoverIsRightAfterSwitchesThatOvertakeIt) {
  chooseMode("focus");
  startHushpane();
  EXPECT_TRUE(showsDimExcept({red_->frameBounds()}));
  const auto raise = [this](const Terminal& terminal) { request(terminal.window(), "_NET_ACTIVE_WINDOW", {2}); };
  const std::vector<const Terminal*> terminals{red_.get(), green_.get(), blue_.get()};
  for (int round = 0; round < 4; ++round) {
    for (int number = 0; number < 90; ++number) {
      raise(*terminals[static_cast<std::size_t>(number % 3)]);
      std::this_thread::sleep_for(milliseconds(number % (round + 3)));
    }
    activate(green_->window());
    activate(red_->window());
    ASSERT_TRUE(showsDimExcept({red_->frameBounds()})) << "in round " << round;
  }
}

}  // namespace
}  // namespace hushpane::x11_tests

#include "tests/managers/managed_desktop.h"

namespace hushpane::x11_tests {
namespace {

class BadWeatherUnder : public ManagedDesktop {
 protected:
  void raisesItself();
  void vanishing();
  void manyWindows();
};
HUSHPANE_RUN_UNDER_ALL_WINDOW_MANAGERS(BadWeatherUnder);

// Some window managers give it the keyboard, too; whichever is active then is seen, and neither flickers.
void BadWeatherUnder::raisesItself() {
  const auto noisy = openWindow({{700, 100, 150, 150}, white});
  activate(red_->window());
  EXPECT_TRUE(seesFront(*red_));
  ScreenWatch watch(display(), {red_->spot(), leftSpot});
  for (int number = 0; number < 15; ++number) {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(x().get(), noisy->window(), XCB_CONFIG_WINDOW_STACK_MODE, &above);
    x().sync();
    wait(100ms);
  }
  EXPECT_TRUE(sees({x().activeWindow() == red_->window() ? spotOf(*red_) : spotOf(*noisy)}, {left(), right()}));
  picture();
  int changes = 0, bright = 0;
  Pixel last = red_->color();
  for (const auto& look : watch.stop()) {
    changes += !isNear(std::exchange(last, look.pixels[0]), look.pixels[0], 3);
    bright += !isNear(look.pixels[1], dimmed(left().color, balanced), 3);
  }
  EXPECT_LE(changes, 3) << "changes of the window in front; thirty would be a flicker at each time";
  EXPECT_EQ(bright, 0) << "looks with the background wrong";
}

void BadWeatherUnder::vanishing() {
  for (int number = 0; number < 100; ++number) {
    const double at = 20 * (number % 30);
    const ClientWindow::Look look{{at, at, 200, 150}, white, "_NET_WM_WINDOW_TYPE_NORMAL", number % 3 == 0};
    const ClientWindow window(x(), look, ClientWindow::Appearing::someTime);
    if (number % 5 == 0) request(window.window(), "_NET_ACTIVE_WINDOW", {2, XCB_CURRENT_TIME});
  }
  activate(red_->window());
  EXPECT_TRUE(seesFront(*red_));
}

void BadWeatherUnder::manyWindows() {
  std::vector<std::unique_ptr<ClientWindow>> windows;
  for (int number = 0; number < 300; ++number) {
    const Rect bounds{700.0 + number % 20 * 10, 50.0 + number / 20 * 20, 60, 40};
    windows.push_back(std::make_unique<ClientWindow>(
        x(), ClientWindow::Look{bounds, brown, "_NET_WM_WINDOW_TYPE_UTILITY"}, ClientWindow::Appearing::someTime));
  }
  EXPECT_TRUE(waitUntil([&] { return x().isOnScreen(windows.back()->window()); }, 30s));
  if (hasEwmh()) waitUntil([&] { return x().numbers(x().root(), "_NET_CLIENT_LIST").size() > windows.size(); }, 20s);
  for (const Terminal* terminal : {green_.get(), red_.get()}) {
    activate(terminal->window());
    EXPECT_TRUE(sees({spotOf(*terminal)}, {left()}));
  }
  picture();
}

TEST_P(BadWeatherUnder, EveryWindowManager) {
  start("focus");
  ASSERT_TRUE(seesFront(*red_));
  runCase("window that raises itself", [this] { raisesItself(); });
  runCase("windows that vanish", [this] { vanishing(); });
  runCase("300 windows", [this] { manyWindows(); });
}

}  // namespace
}  // namespace hushpane::x11_tests

#include <csignal>

#include "tests/managers/managed_desktop.h"

namespace hushpane::x11_tests {
namespace {

// What comes and goes beneath a standing cover.
class ChangesUnder : public ManagedDesktop {
 protected:
  void compositorComesAndGoes();
  void setCompositor(bool isOn);
  void managerIsReplaced();
  void managerDies();
};
HUSHPANE_RUN_UNDER_ALL_WINDOW_MANAGERS(ChangesUnder);

void ChangesUnder::setCompositor(bool isOn) {
  const auto& kind = combination().windowManager;
  if (const auto& command = isOn ? kind.compositorOn : kind.compositorOff; !command.empty()) {
    windowManager().run(command);
  } else if (isOn) {
    startCompositor();
  } else {
    killCompositor(SIGKILL);
  }
  EXPECT_TRUE(waitUntil([&] { return Compositor::isRunning(x()) == isOn; })) << "the compositor does as it likes";
}

// A screen that the compositor itself repaints may flicker for a moment; a cover that turned black would stay so.
void ChangesUnder::compositorComesAndGoes() {
  for (const bool isOn : {!combination().isComposited, combination().isComposited}) {
    SCOPED_TRACE(isOn ? "on" : "off");
    ScreenWatch watch(display(), {leftSpot});
    setCompositor(isOn);
    EXPECT_TRUE(seesFront(*red_));
    activate(green_->window());
    EXPECT_TRUE(seesFront(*green_));
    activate(red_->window());
    EXPECT_TRUE(seesFront(*red_));
    picture();
    Clock::duration longest{};
    const auto looks = watch.stop();
    auto lastRight = looks.front().time;
    for (const auto& look : looks) {
      if (isNear(look.pixels[0], dimmed(left().color, balanced), 3)) lastRight = look.time;
      longest = std::max(longest, look.time - lastRight);
    }
    EXPECT_LT(longest, 500ms) << "with the background wrong";
  }
}

void ChangesUnder::managerIsReplaced() {
  windowManager().replace();
  for (const Terminal* terminal : {green_.get(), red_.get()}) {
    activate(terminal->window());
    EXPECT_TRUE(seesFront(*terminal));
  }
  picture();
}

// Until there is a successor the keyboard follows the pointer, clicks pass, and the program stays calm.
void ChangesUnder::managerDies() {
  const auto application = openFront({{500, 630, 300, 200}, brown});
  const auto behind = openFront({{900, 450, 150, 200}, white});
  activate(application->window());
  EXPECT_TRUE(sees({spotOf(*application)}, {left(), spotOf(*behind)}));
  const Point spot = application->spot();
  runTool({"xdotool", "mousemove", std::to_string(int(spot.x)), std::to_string(int(spot.y))});
  windowManager().process().signal(SIGKILL);
  EXPECT_TRUE(windowManager().process().wait());
  click(application->spot());
  EXPECT_TRUE(sees({spotOf(*application)}, {}));
  wait(500ms);  // for another way to keep the order
  EXPECT_LT(wakeUpsPerSecond(), 60);
  picture();
  const int before = behind->clicks();
  click(behind->spot());
  EXPECT_TRUE(waitUntil([&] { return behind->clicks() > before; }, 2s)) << "a click without a window manager";
  EXPECT_TRUE(hushpane().isRunning());
  restartWindowManager();
  if (combination().isComposited && !combination().runsPicom) drawOnce();
  activate(red_->window());
  EXPECT_TRUE(sees({spotOf(*red_)}, {left(), right()}));
}

TEST_P(ChangesUnder, EveryWindowManager) {
  start("focus");
  ASSERT_TRUE(seesFront(*red_));
  if (combination().canSwitchCompositor) runCase("compositor comes and goes", [this] { compositorComesAndGoes(); });
  runCase("manager replaced", [this] { managerIsReplaced(); });
  runCase("manager dies", [this] { managerDies(); });
}

}  // namespace
}  // namespace hushpane::x11_tests

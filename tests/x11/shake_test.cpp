#include <xcb/xtest.h>

#include <fstream>

#include "tests/x11/desktop.h"

namespace hushpane::x11_tests {
namespace {

constexpr auto deafness = 1500ms;

class Shake : public Desktop {
 protected:
  SettingsValues enabled(bool value) const { return {{"hushpane.mouseShakeEnabled", xml(value)}}; }

  // Eight strokes of 120 points to and fro, as fast as a hand does it: 10 ms from step to step.
  void shake() const {
    std::vector<std::string> command{"xdotool"};
    for (int step = 0; step < 32; ++step) {
      const std::string distance = step / 4 % 2 == 0 ? "30" : "-30";
      command.insert(command.end(), {"mousemove_relative", "--", distance, "0", "sleep", "0.01"});
    }
    runTool(command);
  }
  // The same by telling where the pointer is, as remote desktops do.
  void shakeByPositions() const {
    for (int step = 0; step < 60; ++step) {
      const int along = step / 4 % 2 == 0 ? step % 4 : 3 - step % 4;
      constexpr std::uint8_t isPosition = 0;
      xcb_test_fake_input(x().get(), XCB_MOTION_NOTIFY, isPosition, XCB_CURRENT_TIME, x().root(),
                          static_cast<std::int16_t>(700 + 40 * along), 500, 0);
      x().sync();
      std::this_thread::sleep_for(10ms);
    }
  }
  bool isInMode(const char* mode) const { return sharedFile().value("hushpane.userMode") == mode; }
  void chooseFocus() const {
    keyboard("key", "ctrl+alt+f");
    EXPECT_TRUE(entersMode("focus"));
  }
  // How often the program waited for something new.
  long waits() {
    std::ifstream status("/proc/" + std::to_string(hushpane().pid()) + "/status");
    for (std::string name; status >> name;)
      if (long count = 0; name == "voluntary_ctxt_switches:" && status >> count) return count;
    return -1;
  }
};

TEST_F(Shake, VirtualPointersShakeToo) {
  chooseMode("focus", "dim", enabled(true));
  startHushpane();
  shakeByPositions();
  EXPECT_TRUE(entersMode("standard"));
}

TEST_F(Shake, SettingTakesEffectAtOnceAndTheMouseCostsNothingWithoutIt) {
  chooseMode("focus", "dim");
  startHushpane();
  // At the start the program writes there too.
  EXPECT_TRUE(waitUntil([this] { return settings().value("hushpane.reviewSessionCount") == "1"; }));
  std::this_thread::sleep_for(200ms);
  chooseMode("focus", "dim", enabled(true));
  EXPECT_TRUE(waitUntil([this] {
    shake();
    return isInMode("standard");
  })) << settings().bytes();
  chooseMode("standard", "dim", enabled(false));
  const auto wakesUp = [this] {
    const long before = waits();
    shake();
    return waits() - before > 5;
  };
  EXPECT_TRUE(waitUntil([&] { return !wakesUp(); })) << "motion is still asked for";
  std::this_thread::sleep_for(deafness);
  chooseFocus();
  shake();
  EXPECT_TRUE(holdsFor(300ms, [&] { return isInMode("focus"); }));
}

}  // namespace
}  // namespace hushpane::x11_tests

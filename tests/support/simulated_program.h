#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "app/hushpane_app.h"
#include "desktops/sim/sim_platform.h"
#include "state/state_controller.h"
#include "state/stored_keys.h"

namespace hushpane::tests {

inline const platform::Screen leftScreen{{0, 0, 1000, 800}, 7, "Left", 1};
inline const platform::Screen rightScreen{{1000, 0, 1000, 800}, 9, "Right", 1};

// The whole program on a simulated desktop with two screens; settings and shared files survive relaunch().
class SimulatedProgram : public testing::Test {
 protected:
  sim::Storage storage;
  std::vector<platform::Screen> screens{leftScreen, rightScreen};
  std::unique_ptr<sim::SimPlatform> desktop;

  // The desktop without the program, for what must be there before the launch.
  void prepareDesktop() {
    desktop.reset();
    desktop = std::make_unique<sim::SimPlatform>(storage, screens, HUSHPANE_SOURCE_DIR "/resources");
    desktop->taskQueue().setAutomatic(true);
  }
  void launch() {
    if (!desktop) prepareDesktop();
    HushpaneApp::launch(*desktop);
    desktop->drain();
  }
  void relaunch() {
    prepareDesktop();
    launch();
  }

  StateController& state() { return StateController::shared(); }
  OverlayManager& overlays() { return state().overlayManager(); }
  sim::SimWindow& overlay(const platform::Screen& screen) { return *desktop->windows().ownWindow(screen.frame); }

  void store(std::string_view key, platform::Value value) {
    storage.standardDefaults.insert_or_assign(std::string(key), std::move(value));
  }
  platform::Value stored(std::string_view key) {
    const auto found = storage.standardDefaults.find(key);
    return found == storage.standardDefaults.end() ? platform::Value("absent") : found->second;
  }
  std::string publishedMode() { return WidgetBridge::shared().sharedString(storedKeys::userMode).value_or("absent"); }

  // Another application with one ordinary window; returns the window.
  platform::WindowNumber openApplication(std::string name, const platform::Rect& frame) {
    const auto pid = desktop->workspace().launch(std::move(name));
    const auto number = desktop->windows().add({.ownerPid = pid, .frame = frame, .title = "", .disguise = {}});
    desktop->workspace().activate(pid);
    desktop->drain();
    return number;
  }

  // Where a window stands from the front; the number of windows when it is not on screen.
  std::size_t depthOf(platform::WindowNumber number) {
    const auto stack = desktop->windows().stack();
    std::size_t depth = 0;
    while (depth < stack.size() && stack[depth].number != number) ++depth;
    return depth;
  }
  bool isDirectlyBeneath(sim::SimWindow& lower, platform::WindowNumber upper) {
    // The other screens' overlays may stand between the two.
    const auto stack = desktop->windows().stack();
    for (auto depth = depthOf(upper) + 1; depth < stack.size() && stack[depth].own; ++depth)
      if (stack[depth].own == &lower) return true;
    return false;
  }
};

}  // namespace hushpane::tests

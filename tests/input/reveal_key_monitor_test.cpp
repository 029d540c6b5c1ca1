#include "input/reveal_key_monitor.h"

#include <memory>

#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

using namespace platform::modifier;

constexpr std::uint16_t keyK = 40;

class RevealKeyMonitorTest : public SimulatedProgram {
 protected:
  void SetUp() override {
    prepareDesktop();
    monitor = std::make_unique<RevealKeyMonitor>(*desktop);
    monitor->onPressed = [this] { log += 'P'; };
    monitor->onReleased = [this] { log += 'R'; };
    monitor->start();
  }
  void TearDown() override { monitor.reset(); }

  void press(platform::ModifierFlags flags) {
    desktop->eventMonitors().pressModifier(flags);
    settle();
  }
  void release(platform::ModifierFlags flags) {
    desktop->eventMonitors().releaseModifier(flags);
    settle();
  }
  void type(std::uint16_t key) {
    desktop->eventMonitors().pressKey(key);
    settle();
  }
  void wait(double seconds) { desktop->advance(seconds); }
  void settle() { desktop->drain(); }

  std::unique_ptr<RevealKeyMonitor> monitor;
  std::string log;
};

TEST_F(RevealKeyMonitorTest, HeldAloneForTheDebounceIsOnePressAndOneRelease) {
  press(option);
  wait(0.279);
  EXPECT_EQ(log, "");
  wait(0.002);
  EXPECT_EQ(log, "P");
  desktop->eventMonitors().repeatModifier();  // the other option key
  wait(5);
  EXPECT_EQ(log, "P");
  release(option);
  EXPECT_EQ(log, "PR");
}

TEST_F(RevealKeyMonitorTest, ATapSendsNothing) {
  for (int tap = 0; tap < 3; ++tap) {
    press(option);
    wait(0.2);
    release(option);
    wait(0.2);
  }
  EXPECT_EQ(log, "");
}

TEST_F(RevealKeyMonitorTest, AnotherModifierSpoilsTheHoldAndItsReleaseBeginsANewOne) {
  for (const auto other : {shift, control, command}) {
    log.clear();
    press(option | other);
    wait(1);
    EXPECT_EQ(log, "");
    release(other);
    wait(0.27);
    EXPECT_EQ(log, "");
    wait(0.02);
    EXPECT_EQ(log, "P");
    press(other);
    EXPECT_EQ(log, "PR");
    release(option | other);
  }
}

TEST_F(RevealKeyMonitorTest, LocksAndFunctionKeysAreNoOtherModifier) {
  press(capsLock);
  press(function);
  press(option);
  wait(0.3);
  EXPECT_EQ(log, "P");
  release(capsLock);
  wait(0.3);
  EXPECT_EQ(log, "P");
}

TEST_F(RevealKeyMonitorTest, TypingWithTheModifierEndsOrPreventsTheReveal) {
  press(option);
  wait(0.1);
  type(keyK);
  wait(1);
  EXPECT_EQ(log, "");
  release(option);
  press(option);
  wait(0.3);
  type(keyK);
  EXPECT_EQ(log, "PR");
  wait(1);
  EXPECT_EQ(log, "PR") << "not again before the modifiers change";
}

TEST_F(RevealKeyMonitorTest, TypingWithoutTheModifierChangesNothing) {
  type(keyK);
  press(shift);
  type(keyK);
  release(shift);
  press(option);
  wait(0.3);
  EXPECT_EQ(log, "P");
}

TEST_F(RevealKeyMonitorTest, AnotherChosenModifierHoldsFromTheNextEvent) {
  press(option);
  wait(0.3);
  monitor->modifier = RevealModifier::command;
  EXPECT_EQ(log, "P");
  release(option);
  EXPECT_EQ(log, "PR");
  press(option);
  wait(0.3);
  release(option);
  press(command);
  wait(0.3);
  EXPECT_EQ(log, "PRP");
}

TEST_F(RevealKeyMonitorTest, AHoldThatEndsBetweenThePressCheckAndItsPressSendsNothing) {
  press(option);
  const auto race = desktop->mainQueue().after(RevealKeyMonitor::debounceInterval, [this] { monitor->stop(); });
  wait(1);
  EXPECT_EQ(log, "");
  EXPECT_FALSE(monitor->isHeld());
}

TEST_F(RevealKeyMonitorTest, StartAgainLeavesFourMonitorsAndStopLeavesNone) {
  monitor->start();
  EXPECT_EQ(desktop->eventMonitors().monitorCount(), 4u);
  press(option);
  wait(0.1);
  monitor->stop();
  wait(1);
  EXPECT_EQ(log, "") << "stopped while pending";
  EXPECT_EQ(desktop->eventMonitors().monitorCount(), 0u);

  release(option);
  monitor->start();
  press(option);
  wait(0.3);
  monitor->stop();
  EXPECT_EQ(log, "P") << "the release comes from the main queue";
  EXPECT_FALSE(monitor->isHeld());
  settle();
  EXPECT_EQ(log, "PR");

  release(option);
  monitor->start();
  press(option);
  wait(0.3);
  monitor->start();
  settle();
  EXPECT_EQ(log, "PRPR") << "starting again ends a hold";
}

TEST_F(RevealKeyMonitorTest, KeysInTheProgramsOwnWindowsCountAndPassOn) {
  desktop->eventMonitors().setKeyboardOwner(sim::SimEventMonitors::KeyboardOwner::ownProgram);
  press(option);
  wait(0.3);
  EXPECT_EQ(log, "P");
  type(keyK);
  EXPECT_EQ(log, "PR");
  EXPECT_EQ(desktop->eventMonitors().deliveredLocally(), 2u);
}

TEST_F(RevealKeyMonitorTest, WithoutCallbacksOrMonitorsNothingBreaks) {
  monitor->onPressed = nullptr;
  monitor->onReleased = nullptr;
  press(option);
  wait(0.3);
  EXPECT_TRUE(monitor->isHeld());
  release(option);
  EXPECT_FALSE(monitor->isHeld());
  desktop->eventMonitors().setRefusesMonitors(true);
  monitor->start();
  press(option);
  wait(0.3);
  EXPECT_FALSE(monitor->isHeld());
}

TEST_F(RevealKeyMonitorTest, TheMonitorMayEndInsideItsOwnCallback) {
  monitor->onPressed = [this] { monitor.reset(); };
  press(option);
  wait(0.3);
  release(option);
  wait(1);
  EXPECT_EQ(monitor, nullptr);
  EXPECT_EQ(desktop->eventMonitors().monitorCount(), 0u);
}

}  // namespace
}  // namespace hushpane::tests

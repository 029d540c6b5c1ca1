#include "input/reveal_key_monitor.h"

#include <cctype>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

using namespace platform::modifier;

class RevealKeyMonitorTest : public SimulatedProgram {
 protected:
  void SetUp() override {
    prepareDesktop();
    startMonitor();
  }
  void TearDown() override { monitor.reset(); }

  void startMonitor() {
    log.clear();
    monitor = std::make_unique<RevealKeyMonitor>(*desktop);
    monitor->onPressed = [this] { log += 'P'; };
    monitor->onReleased = [this] { log += 'R'; };
    monitor->start();
  }
  void press(platform::ModifierFlags flags) {
    desktop->eventMonitors().pressModifier(flags);
    settle();
  }
  void release(platform::ModifierFlags flags) {
    desktop->eventMonitors().releaseModifier(flags);
    settle();
  }
  void type() {
    desktop->eventMonitors().pressKey(40);
    settle();
  }
  void wait(double seconds) { desktop->advance(seconds); }
  void settle() { desktop->drain(); }

  // A capital presses a modifier and a small letter releases it, except that x types; a dot is a tenth of a second.
  void play(std::string_view script) {
    static const std::map<char, platform::ModifierFlags> modifiers{{'o', option},  {'s', shift},    {'c', control},
                                                                   {'m', command}, {'l', capsLock}, {'f', function}};
    for (const char step : script) {
      if (step == '.')
        wait(0.1);
      else if (step == 'x')
        type();
      else if (const auto flag = modifiers.find(step); flag != modifiers.end())
        release(flag->second);
      else
        press(modifiers.at(static_cast<char>(step + ('a' - 'A'))));
    }
  }

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

TEST_F(RevealKeyMonitorTest, OnlyTheModifierAloneReveals) {
  struct Case {
    const char* name;
    std::string script;
    const char* log;
  };
  std::vector<Case> cases{
      {"taps", "O..o..O..o..O..o......", ""},
      {"typing prevents it", "O.x..........", ""},
      {"typing ends it, until the modifiers change", "O...x..........", "PR"},
      {"and then it may come again", "O.x..oO...", "P"},
      {"typing without the modifier changes nothing", "xSxsO...", "P"},
      {"locks and function keys are no other modifier", "LFO...l...", "P"},
  };
  for (const std::string other : {"s", "c", "m"}) {
    const std::string pressed(1, static_cast<char>(std::toupper(other[0])));
    cases.push_back({"another modifier spoils it", "O." + pressed + "..........", ""});
    cases.push_back({"its release begins a new hold", pressed + "O.........." + other + "..", ""});
    cases.push_back({"which lasts as long", pressed + "O.........." + other + "...", "P"});
    cases.push_back({"another modifier ends it", "O..." + pressed, "PR"});
  }
  for (const auto& [name, script, expected] : cases) {
    startMonitor();
    play(script);
    EXPECT_EQ(log, expected) << name << ": " << script;
    release(option | shift | control | command | capsLock | function);
  }
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
  const auto hold = [this](double seconds) {
    release(option);
    monitor->start();
    press(option);
    wait(seconds);
  };
  hold(0.1);
  EXPECT_EQ(desktop->eventMonitors().monitorCount(), 4u) << "it was started before";
  monitor->stop();
  wait(1);
  EXPECT_EQ(log, "") << "stopped while pending";
  EXPECT_EQ(desktop->eventMonitors().monitorCount(), 0u);

  hold(0.3);
  monitor->stop();
  EXPECT_EQ(log, "P") << "the release comes from the main queue";
  EXPECT_FALSE(monitor->isHeld());
  settle();
  EXPECT_EQ(log, "PR");

  hold(0.3);
  monitor->start();
  settle();
  EXPECT_EQ(log, "PRPR") << "starting again ends a hold";
}

TEST_F(RevealKeyMonitorTest, KeysInTheProgramsOwnWindowsCountAndPassOn) {
  desktop->eventMonitors().setKeyboardOwner(sim::SimEventMonitors::KeyboardOwner::ownProgram);
  press(option);
  wait(0.3);
  EXPECT_EQ(log, "P");
  type();
  EXPECT_EQ(log, "PR");
  EXPECT_EQ(desktop->eventMonitors().deliveredLocally(), 2u);
}

TEST_F(RevealKeyMonitorTest, WithoutMonitorsNothingIsEverHeld) {
  desktop->eventMonitors().setRefusesMonitors(true);
  monitor->start();
  press(option);
  wait(0.3);
  EXPECT_EQ(log, "");
}

TEST(RevealModifierTest, ATextThatNamesNoModifierIsOption) {
  EXPECT_EQ(revealModifierFrom("command"), RevealModifier::command);
  for (const auto* text : {"", "fn", "Command", "alt"})
    EXPECT_EQ(revealModifierFrom(text), RevealModifier::option) << text;
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

#include <algorithm>

#include "tests/x11/desktop.h"

namespace hushpane::x11_tests {
namespace {

// The program on a session bus.
class OnTheBus : public Desktop {
 protected:
  OnTheBus() { startBus(); }

  // Starts the program and waits until others can reach it.
  void startReachable(const std::vector<std::string>& arguments = {}) {
    startHushpane(arguments);
    EXPECT_TRUE(waitUntil([this] {
      return runTool({"dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                      "org.freedesktop.DBus.NameHasOwner", "string:com.corvane.Hushpane"})
                 .find("true") != std::string::npos;
    }));
  }

  // After the last switch: whether the program comes to have counted so many in all.
  bool hasCounted(int switches) const {
    return waitUntil([&] { return settings().value("hushpane.reviewSwitchCount") == std::to_string(switches); });
  }

  void expectHandedOver(const std::vector<std::string>& arguments) {
    const auto second = runHushpane(arguments);
    EXPECT_EQ(second->wait(0ms), 0);
    EXPECT_EQ(second->output() + second->errors(), "");
    EXPECT_TRUE(hushpane().isRunning());
  }
};

TEST_F(OnTheBus, SecondStartHandsItsUrlsToTheFirst) {
  chooseMode("standard");
  startReachable({"hushpane://mode/cleanDesktop", "hushpane://mode/focus"});
  EXPECT_TRUE(hasCounted(2)) << "its own two";
  EXPECT_TRUE(entersMode("focus"));
  expectHandedOver({"hushpane://mode/standard"});
  EXPECT_TRUE(entersMode("standard"));
  expectHandedOver({"hushpane://mode/focus"});
  EXPECT_TRUE(entersMode("focus"));
  EXPECT_TRUE(showsDimExcept({red_->frameBounds()}));
  EXPECT_EQ(settings().value("hushpane.lastUserMode"), "focus");
  expectHandedOver({"hushpane://mode/focus", "hushpane://mode/anything/cleanDesktop?x=1"});
  EXPECT_TRUE(entersMode("cleanDesktop"));
  EXPECT_TRUE(hasCounted(6));
  expectHandedOver({});
  EXPECT_TRUE(hasCounted(6));
  expectHandedOver({"hushpane://mode/Focus", "hushpane://modes/focus", "HUSHPANE://mode/focus",
                    "hushpane://mode/reveal", "hushpane://mode", "hushpane://mode/", "hushpane:focus", "hushpane://",
                    "http://mode/focus", "hushpane://mode/focus/nonsense", "hushpane://mode/%zz",
                    "hushpane://mode/" + std::string(5000, 'x')});
  expectHandedOver({"hushpane://mode/standard"});
  EXPECT_TRUE(entersMode("standard"));
  EXPECT_TRUE(hasCounted(7)) << "what names no mode changes nothing";
}

// Each URL that arrives is counted as a switch.
TEST_F(OnTheBus, FiftyStartsAtOnceLeaveOneInstanceAndLoseNoUrl) {
  constexpr int starts = 50;
  chooseMode("standard");
  std::vector<std::unique_ptr<Process>> programs;
  for (int number = 0; number < starts; ++number)
    programs.push_back(spawnHushpane({number % 2 == 0 ? "hushpane://mode/focus" : "hushpane://mode/cleanDesktop"}));
  EXPECT_TRUE(waitUntil(
      [&] {
        return std::count_if(programs.begin(), programs.end(), [](auto& program) { return program->isRunning(); }) == 1;
      },
      60s));
  EXPECT_TRUE(hasCounted(starts));
  for (const auto& program : programs) {
    EXPECT_EQ(program->wait(0ms).value_or(0), 0) << "the one that still runs has no status";
    EXPECT_EQ(program->output() + program->errors(), "");
  }
}

TEST_F(OnTheBus, SurvivesTheEndOfTheBus) {
  chooseMode("cleanDesktop");
  startReachable();
  ASSERT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  endBus();
  EXPECT_TRUE(keeps(leftSpot, dimmed(background, balanced), 500ms));
  keyboard("keydown", "alt");
  EXPECT_TRUE(shows(leftSpot, background));
  keyboard("keyup", "alt");
  EXPECT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  EXPECT_EQ(stopHushpane(), 0);
}

TEST_F(Desktop, WorksWithoutABus) {
  environment()["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nowhere/bus";
  chooseMode("standard");
  startHushpane({"hushpane://mode/focus"});
  EXPECT_TRUE(entersMode("focus"));
  EXPECT_TRUE(showsDimExcept({red_->frameBounds()}));
  EXPECT_EQ(stopHushpane(), 0);
  EXPECT_EQ(hushpane().errors(), "");
}

}  // namespace
}  // namespace hushpane::x11_tests

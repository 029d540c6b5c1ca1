#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

using LaunchTest = SimulatedProgram;

TEST_F(LaunchTest, TheProgramIsAnAccessoryWithTheStoredRevealModifier) {
  launch();
  EXPECT_EQ(desktop->application().activationPolicy(), platform::ActivationPolicy::accessory);
  EXPECT_EQ(state().revealMonitor().modifier, RevealModifier::option);
  for (const auto& [text, modifier] : {std::pair{"command", RevealModifier::command},
                                       {"fn", RevealModifier::option},
                                       {"Shift", RevealModifier::option}}) {
    store(storedKeys::revealModifier, text);
    relaunch();
    EXPECT_EQ(state().revealMonitor().modifier, modifier) << text;
  }
}

TEST_F(LaunchTest, UrlsSwitchInOrderAndEachCounts) {
  launch();
  desktop->application().openUrls({"hushpane://mode/standard", "hushpane://mode/nonsense", "hushpane://mode/reveal",
                                   "http://mode/cleanDesktop", "hushpane://mode/focus"});
  desktop->drain();
  EXPECT_EQ(state().userMode(), VeilMode::focus);
  EXPECT_EQ(stored(storedKeys::lastUserMode), platform::Value("focus"));
  EXPECT_EQ(stored(storedKeys::reviewSwitchCount), platform::Value(2));
  EXPECT_EQ(publishedMode(), "focus");
}

TEST_F(LaunchTest, UrlsFromBeforeTheLaunchAreNotLost) {
  prepareDesktop();
  desktop->application().openUrls({"hushpane://mode/cleanDesktop"});
  desktop->drain();
  launch();
  EXPECT_EQ(state().userMode(), VeilMode::cleanDesktop);
}

TEST_F(LaunchTest, TheModeSurvivesARelaunch) {
  launch();
  state().setMode(VeilMode::cleanDesktop);
  relaunch();
  EXPECT_EQ(state().userMode(), VeilMode::cleanDesktop);
  EXPECT_TRUE(overlay(leftScreen).isOnScreen());
  EXPECT_EQ(stored(storedKeys::reviewSessionCount), platform::Value(2));
}

TEST_F(LaunchTest, TheProgramMayEndAtAnyMomentOfAFade) {
  launch();
  openApplication("Front", {100, 100, 300, 300});
  state().setMode(VeilMode::focus);
  desktop->eventMonitors().pressModifier(platform::modifier::option);
  desktop->advance(0.3);
  desktop.reset();
  relaunch();
  EXPECT_EQ(state().userMode(), VeilMode::focus);
}

}  // namespace
}  // namespace hushpane::tests

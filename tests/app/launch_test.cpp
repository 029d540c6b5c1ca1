#include <optional>

#include "app/app_delegate.h"
#include "state/app_router.h"
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

// The mouse shaken for half a second.
void shake(sim::SimPlatform& desktop) {
  for (const double step : {100, -100, 100, -100, 100, -100, 100}) {
    desktop.eventMonitors().moveMouse(step);
    desktop.advance(0.07);
  }
}

TEST_F(LaunchTest, AShakeReturnsToStandardWhileItsSettingIsOn) {
  launch();
  const auto& monitors = desktop->eventMonitors();
  const auto without = monitors.monitorCount();
  state().setMode(VeilMode::focus);
  shake(*desktop);
  EXPECT_EQ(state().userMode(), VeilMode::focus);
  desktop->userDefaults().set(storedKeys::mouseShakeEnabled, true);
  desktop->drain();
  EXPECT_EQ(monitors.monitorCount(), without + 1);
  shake(*desktop);
  EXPECT_EQ(state().userMode(), VeilMode::standard);
  EXPECT_EQ(stored(storedKeys::lastUserMode), platform::Value("standard"));
  EXPECT_EQ(stored(storedKeys::reviewSwitchCount), platform::Value(2));
  desktop->userDefaults().set(storedKeys::mouseShakeEnabled, false);
  desktop->drain();
  EXPECT_EQ(monitors.monitorCount(), without);
}

TEST_F(LaunchTest, TheShakeSettingHoldsFromTheStartAndOutlivesOtherChanges) {
  store(storedKeys::mouseShakeEnabled, true);
  launch();
  for (const char* text : {"dim", "blur"}) {
    state().setMode(VeilMode::cleanDesktop);
    desktop->userDefaults().set(storedKeys::ambientSurface, text);
    desktop->advance(2);
    shake(*desktop);
    EXPECT_EQ(state().userMode(), VeilMode::standard) << text;
  }
  const auto running = desktop->eventMonitors().monitorCount();
  desktop->userDefaults().remove(storedKeys::mouseShakeEnabled);
  desktop->drain();
  EXPECT_EQ(desktop->eventMonitors().monitorCount(), running - 1) << "off unless it is on";
}

TEST_F(LaunchTest, TheProgramComesForwardOnceItIsUp) {
  prepareDesktop();
  HushpaneApp::launch(*desktop);
  EXPECT_EQ(desktop->application().activations(), 0);
  desktop->drain();
  EXPECT_EQ(desktop->application().activations(), 1);
}

TEST_F(LaunchTest, TheWelcomePageComesUntilItWasDismissed) {
  launch();
  auto& router = AppRouter::shared();
  EXPECT_TRUE(router.showingWelcome());
  router.openSettings();
  EXPECT_TRUE(router.showingSettings());
  relaunch();
  EXPECT_TRUE(AppRouter::shared().showingWelcome()) << "seen, but not dismissed";
  EXPECT_FALSE(AppRouter::shared().showingSettings());
  int announcements = 0;
  const auto observer = AppRouter::shared().observe([&] { ++announcements; });
  AppRouter::shared().continueFromWelcome();
  EXPECT_FALSE(AppRouter::shared().showingWelcome());
  EXPECT_EQ(announcements, 1);
  relaunch();
  EXPECT_FALSE(AppRouter::shared().showingWelcome());
}

class HintTest : public SimulatedProgram {
 protected:
  void launchDelegate() {
    delegate.emplace(*desktop, AppRouter::shared());
    delegate->showMenuBarHint = [this] { ++hints; };
    delegate->applicationDidFinishLaunching();
    desktop->drain();
  }
  void TearDown() override { delegate.reset(); }

  std::optional<AppDelegate> delegate;
  int hints = 0;
};

TEST_F(HintTest, TheHintFollowsTheWelcomeDecisionAfterAMoment) {
  prepareDesktop();
  launchDelegate();
  desktop->advance(0.39);
  EXPECT_EQ(hints, 0);
  desktop->advance(0.02);
  EXPECT_EQ(hints, 1);
  launchDelegate();
  desktop->advance(1);
  EXPECT_EQ(hints, 1) << "the page is up already";
}

TEST_F(HintTest, NoHintForThoseWhoKnowOrWhenTheDelegateIsGone) {
  store(storedKeys::hasSeenWelcome, true);
  prepareDesktop();
  launchDelegate();
  desktop->advance(1);
  EXPECT_FALSE(AppRouter::shared().showingWelcome());
  delegate.reset();
  store(storedKeys::hasSeenWelcome, false);
  prepareDesktop();
  launchDelegate();
  delegate.reset();
  desktop->advance(1);
  EXPECT_EQ(hints, 0);
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

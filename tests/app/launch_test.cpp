#include <optional>

#include "app/app_delegate.h"
#include "state/app_router.h"
#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

using LaunchTest = SimulatedProgram;

TEST_F(LaunchTest, TheProgramIsAnAccessoryWithTheStoredRevealModifier) {
  store(storedKeys::revealModifier, "command");
  launch();
  EXPECT_EQ(desktop->application().activationPolicy(), platform::ActivationPolicy::accessory);
  EXPECT_EQ(state().revealMonitor().modifier, RevealModifier::command);
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

// The mouse shaken for half a second.
void shake(sim::SimPlatform& desktop) {
  for (const double step : {100, -100, 100, -100, 100, -100, 100}) {
    desktop.eventMonitors().moveMouse(step);
    desktop.advance(0.07);
  }
}

TEST_F(LaunchTest, AShakeReturnsToStandardWhileItsSettingIsOn) {
  launch();
  const auto without = desktop->eventMonitors().monitorCount();
  state().setMode(VeilMode::focus);
  shake(*desktop);
  EXPECT_EQ(state().userMode(), VeilMode::focus);
  desktop->userDefaults().set(storedKeys::mouseShakeEnabled, true);
  for (const char* text : {"dim", "blur"}) {
    state().setMode(VeilMode::cleanDesktop);
    desktop->userDefaults().set(storedKeys::ambientSurface, text);
    desktop->advance(2);
    shake(*desktop);
    EXPECT_EQ(state().userMode(), VeilMode::standard) << "after another setting became " << text;
  }
  desktop->userDefaults().set(storedKeys::mouseShakeEnabled, false);
  desktop->drain();
  EXPECT_EQ(desktop->eventMonitors().monitorCount(), without);

  store(storedKeys::mouseShakeEnabled, true);
  relaunch();
  state().setMode(VeilMode::focus);
  shake(*desktop);
  EXPECT_EQ(state().userMode(), VeilMode::standard) << "from the start";
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
  EXPECT_TRUE(AppRouter::shared().showingWelcome());
  AppRouter::shared().openSettings();
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

TEST_F(LaunchTest, TheHintComesWithTheWelcomePageUnlessTheDelegateIsGone) {
  int hints = 0;
  std::optional<AppDelegate> delegate;
  const auto launchDelegate = [&] {
    delegate.emplace(*desktop, AppRouter::shared());
    delegate->showMenuBarHint = [&] { ++hints; };
    delegate->applicationDidFinishLaunching();
    desktop->drain();
  };
  prepareDesktop();
  for (int launches = 0; launches < 2; ++launches) {
    launchDelegate();
    desktop->advance(1);
    EXPECT_EQ(hints, 1) << "once, as the page is up already the second time";
  }
  delegate.reset();
  prepareDesktop();
  launchDelegate();
  delegate.reset();
  desktop->advance(1);
  EXPECT_EQ(hints, 1);
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

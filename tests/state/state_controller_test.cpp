#include "state/state_controller.h"

#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

using StateControllerTest = SimulatedProgram;

TEST_F(StateControllerTest, TheLastUserModeComesBackAtOnceAndPublished) {
  store(storedKeys::lastUserMode, "focus");
  launch();
  EXPECT_EQ(state().userMode(), VeilMode::focus);
  EXPECT_EQ(overlays().currentState(), (RenderedState{false, true, VeilMode::focus}));
  EXPECT_EQ(overlay(leftScreen).presentationAlpha(), 1) << "the last step of the launch shows it without a fade";
  EXPECT_EQ(publishedMode(), "focus");
  EXPECT_EQ(desktop->widgetCenter().reloadCount(), 2u);
  EXPECT_EQ(stored(storedKeys::reviewSessionCount), platform::Value(1));
  EXPECT_EQ(stored(storedKeys::reviewSwitchCount), platform::Value("absent"));
}

TEST_F(StateControllerTest, AnythingButAUserModeRestoresStandard) {
  for (const platform::Value& text :
       std::initializer_list<platform::Value>{"reveal", "Focus", " focus", "focus ", "cleandesktop", "clean", "", 1}) {
    store(storedKeys::lastUserMode, text);
    relaunch();
    EXPECT_EQ(state().userMode(), VeilMode::standard);
    EXPECT_EQ(stored(storedKeys::lastUserMode), text) << "reading rewrites nothing";
  }
}

TEST_F(StateControllerTest, ChoosingAModeStoresAppliesPublishesAndCountsEachTime) {
  launch();
  const auto reloads = desktop->widgetCenter().reloadCount();
  state().setMode(VeilMode::focus);
  state().setMode(VeilMode::focus);
  EXPECT_EQ(stored(storedKeys::lastUserMode), platform::Value("focus"));
  EXPECT_EQ(stored(storedKeys::reviewSwitchCount), platform::Value(2));
  EXPECT_EQ(desktop->widgetCenter().reloadCount(), reloads + 2);
  EXPECT_TRUE(overlays().currentState().showFocus);

  state().setMode(VeilMode::reveal);
  EXPECT_EQ(state().userMode(), VeilMode::focus);
  EXPECT_EQ(stored(storedKeys::reviewSwitchCount), platform::Value(2));
}

TEST_F(StateControllerTest, HoldingTheModifierLiftsTheCoverAndReleasingBringsTheModeBack) {
  launch();
  state().setMode(VeilMode::cleanDesktop);
  desktop->advance(1);
  const auto reloads = desktop->widgetCenter().reloadCount();
  desktop->eventMonitors().pressModifier(platform::modifier::option);
  desktop->advance(0.28);
  EXPECT_TRUE(state().isRevealHeld());
  EXPECT_EQ(overlays().currentState(), (RenderedState{false, false, VeilMode::reveal}));
  desktop->advance(0.2);
  EXPECT_TRUE(overlay(leftScreen).isOnScreen());
  desktop->advance(0.05);
  EXPECT_FALSE(overlay(leftScreen).isOnScreen()) << "gone after the short fade of 0.22 s";

  state().setMode(VeilMode::focus);  // a choice during the hold shows on release
  EXPECT_EQ(overlays().currentState().effectiveMode, VeilMode::reveal);
  desktop->eventMonitors().releaseModifier(platform::modifier::option);
  desktop->drain();
  EXPECT_EQ(overlays().currentState(), (RenderedState{false, true, VeilMode::focus}));
  EXPECT_EQ(publishedMode(), "focus");
  EXPECT_EQ(desktop->widgetCenter().reloadCount(), reloads + 1) << "the hold itself publishes nothing";
}

TEST_F(StateControllerTest, AWidgetRequestSwitchesOnlyToAnotherUserModeAndOneTurnLater) {
  launch();
  const auto request = [this](const char* mode) {
    WidgetBridge::shared().setSharedString(mode, storedKeys::userMode);
    desktop->distributedNotificationCenter().post(WidgetBridge::widgetModeChange);
    EXPECT_EQ(state().userMode(), VeilMode::standard) << mode;
    desktop->drain();
    return state().userMode();
  };
  for (const auto* ignored : {"reveal", "Focus", "", "standard"}) EXPECT_EQ(request(ignored), VeilMode::standard);
  EXPECT_EQ(stored(storedKeys::reviewSwitchCount), platform::Value("absent"));
  EXPECT_EQ(request("focus"), VeilMode::focus);
  EXPECT_EQ(stored(storedKeys::lastUserMode), platform::Value("focus"));
  EXPECT_EQ(stored(storedKeys::reviewSwitchCount), platform::Value(1));
}

TEST_F(StateControllerTest, StoredEnablementHoldsFromTheLaunchAndAfterADisplayChangeAndIsReplacedWhole) {
  store(storedKeys::lastUserMode, "cleanDesktop");
  store(storedKeys::displayEnablement, platform::Dictionary{{"7", false}, {"abc", true}});
  launch();
  EXPECT_FALSE(overlay(leftScreen).isOnScreen());
  EXPECT_TRUE(overlay(rightScreen).isOnScreen());

  store(storedKeys::displayEnablement, platform::Dictionary{{"9", false}});
  desktop->screens().remove(7);
  desktop->screens().add(leftScreen);
  desktop->drain();
  EXPECT_TRUE(overlay(leftScreen).isOnScreen());
  EXPECT_FALSE(overlay(rightScreen).isOnScreen());

  overlays().setDisplayEnablement({{7, false}});
  state().saveDisplayEnablement();
  EXPECT_EQ(stored(storedKeys::displayEnablement), platform::Value(platform::Dictionary{{"7", false}}));
}

}  // namespace
}  // namespace hushpane::tests

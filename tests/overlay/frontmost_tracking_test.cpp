#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

constexpr double tick = 0.1;  // seconds
constexpr platform::Rect ordinary{100, 100, 400, 300};

class FrontmostTrackingTest : public SimulatedProgram {
 protected:
  void SetUp() override { launch(); }

  void enterFocus() {
    state().setMode(VeilMode::focus);
    desktop->advance(1);
  }
  void resize(platform::WindowNumber window, const platform::Rect& frame) {
    desktop->windows().setFrame(window, frame);
    desktop->advance(tick);
  }
  bool isFree(const platform::Screen& screen) { return !overlay(screen).isOnScreen(); }
};

TEST_F(FrontmostTrackingTest, OverlaysStandDirectlyBeneathTheFrontWindowAndFollowAnActivationWithoutWaitingForATick) {
  const auto back = openApplication("Back", ordinary);
  const auto front = openApplication("Front", {150, 150, 400, 300});
  enterFocus();
  for (const auto& screen : screens) {
    EXPECT_TRUE(isDirectlyBeneath(overlay(screen), front));
    EXPECT_LT(depthOf(overlay(screen).number()), depthOf(back));
  }
  desktop->advance(tick / 3);
  desktop->workspace().activateWindow(back);
  desktop->drain();
  for (const auto& screen : screens) EXPECT_TRUE(isDirectlyBeneath(overlay(screen), back));
}

TEST_F(FrontmostTrackingTest, ARaisedWindowOfTheSameApplicationIsFoundByTheNextTick) {
  const auto first = openApplication("App", ordinary);
  const auto pid = desktop->windows().find(first)->ownerPid;
  const auto second =
      desktop->windows().add({.ownerPid = pid, .frame = {50, 50, 300, 300}, .title = "", .disguise = {}});
  enterFocus();
  ASSERT_TRUE(isDirectlyBeneath(overlay(leftScreen), second));
  desktop->windows().raise(first);
  desktop->advance(tick);
  EXPECT_TRUE(isDirectlyBeneath(overlay(leftScreen), first));
}

TEST_F(FrontmostTrackingTest, WhatTheFrontApplicationFillsIsLeftFree) {
  openApplication("Player", leftScreen.frame);
  enterFocus();
  EXPECT_TRUE(isFree(leftScreen));
  EXPECT_FALSE(isFree(rightScreen));
  EXPECT_EQ(overlay(rightScreen).presentationAlpha(), 1);

  const auto small = openApplication("Small", ordinary);
  EXPECT_FALSE(isFree(leftScreen)) << "covered again beneath the other application's window";
  desktop->advance(0.2);
  EXPECT_EQ(overlay(leftScreen).presentationAlpha(), 1) << "with the short fade of 0.15 s";
  EXPECT_TRUE(isDirectlyBeneath(overlay(leftScreen), small));
}

TEST_F(FrontmostTrackingTest, AGrowingWindowFreesItsDisplaysUntilItIsStill) {
  const auto window = openApplication("Zoom", {100, 100, 200, 200});
  enterFocus();
  resize(window, {100, 100, 800, 600});
  EXPECT_TRUE(isFree(leftScreen));
  EXPECT_FALSE(isFree(rightScreen));
  resize(window, {100, 100, 800, 640});
  EXPECT_TRUE(isFree(leftScreen)) << "6.7 % more: still changing";
  resize(window, {100, 100, 400, 300});
  EXPECT_TRUE(isFree(leftScreen)) << "much less: still changing";
  resize(window, {100, 100, 400, 309});
  EXPECT_FALSE(isFree(leftScreen)) << "3 % more: nearly still";
}

TEST_F(FrontmostTrackingTest, SmallStartsAndActivationsAreNoGrowth) {
  const auto window =
      openApplication("Small", {100, 100, 101, 99});  // not above 10000 square points, one side too short
  enterFocus();
  resize(window, {100, 100, 800, 600});
  EXPECT_FALSE(isFree(leftScreen)) << "nothing counted before";

  const auto other = openApplication("Other", {100, 100, 300, 300});
  desktop->windows().setFrame(other, {100, 100, 800, 600});
  desktop->workspace().activateWindow(other);
  desktop->advance(tick);
  EXPECT_FALSE(isFree(leftScreen)) << "an activation forgets the area before";
}

TEST_F(FrontmostTrackingTest, WhatGrowthHeldIsReleasedByTheEndOfTheWindowAFilledDisplayOrAnActivation) {
  const auto window = openApplication("Zoom", {900, 100, 200, 200});
  const auto pid = desktop->windows().find(window)->ownerPid;
  const auto grow = [&](platform::WindowNumber number) {
    desktop->windows().setFrame(number, {900, 100, 200, 200});
    desktop->advance(3 * tick);
    resize(number, {500, 0, 1000, 780});
    return isFree(leftScreen) && isFree(rightScreen);
  };
  enterFocus();
  ASSERT_TRUE(grow(window));
  resize(window, leftScreen.frame);
  EXPECT_TRUE(isFree(leftScreen));
  EXPECT_FALSE(isFree(rightScreen)) << "a filled display ends the hold of the others";

  ASSERT_TRUE(grow(window));
  desktop->windows().close(window);
  desktop->advance(tick);
  const auto next =
      desktop->windows().add({.ownerPid = pid, .frame = {600, 100, 600, 600}, .title = "", .disguise = {}});
  desktop->advance(tick);
  EXPECT_FALSE(isFree(leftScreen) || isFree(rightScreen)) << "without a window nothing is held";

  ASSERT_TRUE(grow(next));
  openApplication("Other", ordinary);
  EXPECT_FALSE(isFree(leftScreen) || isFree(rightScreen)) << "an activation forgets";
}

TEST_F(FrontmostTrackingTest, WithoutAFrontWindowNothingMoves) {
  const auto front = openApplication("Front", ordinary);
  enterFocus();
  const auto changes = desktop->windows().orderChangeCount();
  desktop->workspace().deactivateAll();
  desktop->advance(0.3);
  desktop->workspace().activateOwnProgram();
  desktop->advance(0.3);
  desktop->windowList().setReadable(false);
  desktop->workspace().activate(desktop->windows().find(front)->ownerPid);
  desktop->advance(0.3);
  EXPECT_EQ(desktop->windows().orderChangeCount(), changes);
  EXPECT_TRUE(isDirectlyBeneath(overlay(leftScreen), front));
  EXPECT_EQ(overlay(leftScreen).presentationAlpha(), 1);
}

TEST_F(FrontmostTrackingTest, AWindowTooSmallForCoverageIsStillFound) {
  const auto small = openApplication("Utility", {100, 100, 60, 60});
  enterFocus();
  EXPECT_TRUE(isDirectlyBeneath(overlay(leftScreen), small));
}

TEST_F(FrontmostTrackingTest, ASpaceSwitchFreesFilledDisplaysAtOnceAndFindsTheNewFront) {
  const auto here = openApplication("Here", ordinary);
  enterFocus();
  const auto player = desktop->workspace().launch("Player");
  desktop->windows().add({.ownerPid = player, .frame = leftScreen.frame, .title = "", .space = 1, .disguise = {}});
  desktop->workspace().activate(player);
  desktop->workspace().switchSpace(1);
  desktop->mainQueue().runOneTurn();
  EXPECT_EQ(overlay(leftScreen).presentationAlpha(), 0);
  desktop->advance(tick);
  EXPECT_TRUE(isFree(leftScreen));
  desktop->workspace().switchSpace(0);
  desktop->workspace().activateWindow(here);
  desktop->advance(0.3);
  EXPECT_TRUE(isDirectlyBeneath(overlay(leftScreen), here));
  EXPECT_EQ(overlay(leftScreen).presentationAlpha(), 1);
}

TEST_F(FrontmostTrackingTest, TicksEndWithFocusAndAnIdleTickChangesNothing) {
  openApplication("Front", ordinary);
  enterFocus();
  const auto changes = desktop->windows().orderChangeCount();
  desktop->advance(5);
  EXPECT_EQ(desktop->windows().orderChangeCount(), changes);
  EXPECT_FALSE(desktop->frameClock().isRunning());
  EXPECT_EQ(desktop->mainQueue().pendingCount(), 1u) << "the timer alone";
  state().setStandard();
  desktop->advance(1);
  EXPECT_EQ(desktop->mainQueue().pendingCount(), 0u);
  EXPECT_FALSE(desktop->frameClock().isRunning());
}

TEST_F(FrontmostTrackingTest, AFadeIntoFocusKeepsItsSevenTenthsOfASecond) {
  openApplication("Front", ordinary);
  state().setMode(VeilMode::focus);
  desktop->advance(0.35);
  EXPECT_LT(overlay(leftScreen).presentationAlpha(), 0.95) << "the ticks do not cut the fade short";
  desktop->advance(0.4);
  EXPECT_EQ(overlay(leftScreen).presentationAlpha(), 1);
}

}  // namespace
}  // namespace hushpane::tests

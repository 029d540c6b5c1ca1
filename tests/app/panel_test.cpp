#include "tests/app/panel_test.h"

#include <algorithm>

#include "app/menu_bar_hint_window_controller.h"
#include "desktops/shared/cairo_canvas.h"
#include "localization/language_manager.h"
#include "state/app_router.h"
#include "state/corvane_updater.h"

namespace hushpane::tests {
namespace {

TEST_F(PanelTest, TheIconFollowsModeAndRevealKey) {
  launch();
  const auto& item = desktop->statusItem();
  // The band at the right end is filled while a cover is on screen.
  const auto isActive = [&] {
    platform::Image image{20, 20, std::vector<std::uint32_t>(400)};
    desktops::CairoCanvas canvas(image, 1);
    item.image().draw(canvas, 1);
    return (image.pixels[10 * 20 + 16] >> 24) > 200;
  };
  EXPECT_FALSE(isActive());
  EXPECT_EQ(item.toolTip(), "Hushpane: Standard");
  state().setMode(VeilMode::focus);
  desktop->drain();
  EXPECT_TRUE(isActive());
  EXPECT_EQ(item.toolTip(), "Hushpane: Focus");
  desktop->eventMonitors().pressModifier(platform::modifier::option);
  desktop->advance(1);
  ASSERT_TRUE(state().isRevealHeld());
  EXPECT_FALSE(isActive());
  desktop->eventMonitors().releaseModifier(platform::modifier::option);
  desktop->drain();
  EXPECT_TRUE(isActive());
  LanguageManager::shared().select("de");
  desktop->drain();
  EXPECT_EQ(item.toolTip(), "Hushpane: Fokus");
}

TEST_F(PanelTest, OpensBesideTheIconInsideTheDisplay) {
  launch();
  open();
  ASSERT_EQ(panelCount(), 1u);
  EXPECT_GE(outline().y, barHeight) << "beneath the bar";
  EXPECT_LE(outline().y, barHeight + 12);
  EXPECT_LE(outline().right(), leftScreen.frame.right());
  const double top = outline().y;
  click("Focus");
  EXPECT_EQ(outline().y, top) << "the card makes it grow downwards";
  EXPECT_TRUE(shows("Surface"));
  click(icon());
  EXPECT_EQ(panelCount(), 0u) << "the second click closes";
  desktop->setStatusBar(Bar::bottom);
  open();
  EXPECT_LE(outline().bottom(), leftScreen.frame.bottom() - barHeight) << "above an icon at the bottom";
  const double bottom = outline().bottom();
  click("Standard");
  EXPECT_NEAR(outline().bottom(), bottom, 1) << "it shrinks downwards";
}

TEST_F(PanelTest, ClosesByEscapeByAClickElsewhereAndWhenAnotherProgramComesToTheFront) {
  launch();
  const auto closesBy = [&](const char* what, const std::function<void()>& action) {
    open();
    EXPECT_EQ(panelCount(), 1u) << what;
    EXPECT_TRUE(shows("Quit")) << "every opening begins with the menu page";
    action();
    desktop->drain();
    EXPECT_EQ(panelCount(), 0u) << what;
  };
  closesBy("Escape", [&] {
    AppRouter::shared().openSettings();
    settle();
    EXPECT_TRUE(shows("Launch at login"));
    type(escapeKey);
  });
  closesBy("click elsewhere", [&] { click(Point{100, 700}); });
  closesBy("right click elsewhere", [&] {
    desktop->pointer().moveTo({100, 700});
    desktop->pointer().pressRightButton();
  });
  closesBy("another program", [&] { openApplication("Editor", {100, 100, 300, 300}); });
  open();
  click(middleOf("Hold ⌥ Option to Reveal"));
  EXPECT_EQ(panelCount(), 1u) << "a click on the panel itself";
  for (int count = 0; count < 200; ++count) {
    click(icon());
    desktop->advance(0.05);
  }
  EXPECT_EQ(panelCount(), 1u) << "opened and closed by turns";
}

// Some desktops tell only where the click was, and their bars are other programs.
TEST_F(PanelTest, AnIconWithoutAPlaceOpensWhereItWasClickedAndClosesWithTheSameClick) {
  launch();
  desktop->statusItem().setFrameUntold(true);
  const Point place{700, 12};
  const auto clickBar = [&] {
    desktop->pointer().click(place);
    desktop->drain();
    desktop->advance(0.1);
    desktop->statusItem().click(place);
    desktop->drain();
  };
  clickBar();
  settle();
  ASSERT_EQ(panelCount(), 1u);
  EXPECT_NEAR(outline().x + outline().width / 2, place.x, 1);
  clickBar();
  EXPECT_EQ(panelCount(), 0u);
  clickBar();
  settle();
  ASSERT_EQ(panelCount(), 1u);
  desktop->pointer().click(place);
  desktop->drain();
  desktop->statusItem().click(Point{100, 300});
  desktop->drain();
  EXPECT_EQ(panelCount(), 0u) << "wherever the desktop takes the icon to be";
  desktop->advance(2);
  desktop->statusItem().click(place);
  desktop->drain();
  EXPECT_EQ(panelCount(), 1u) << "a click of its own";
}

TEST_F(PanelTest, WithoutAnIconASecondStartOpensItInTheCornerOfTheBar) {
  launch();
  desktop->setStatusBar(Bar::none);
  const auto startAgainAt = [&](Point pointer) {
    desktop->pointer().moveTo(pointer);
    desktop->application().reopen();
    desktop->drain();
    settle();
    ASSERT_EQ(panelCount(), 1u);
  };
  startAgainAt({1500, 400});
  EXPECT_NEAR(outline().right(), rightScreen.frame.right(), 10) << "of the display with the pointer";
  EXPECT_NEAR(outline().y, 0, 10);
  type(escapeKey);
  desktop->screens().setBars(0, 40);
  startAgainAt({500, 400});
  EXPECT_NEAR(outline().bottom(), 760, 10) << "the bar is at the bottom";
  EXPECT_NEAR(outline().right(), 1000, 10);
}

TEST_F(PanelTest, TheKeyboardUsesItAndTheProgramInFrontStaysThere) {
  launch();
  const auto window = openApplication("Editor", {100, 100, 300, 300});
  state().setMode(VeilMode::focus);
  desktop->drain();
  open();
  EXPECT_EQ(desktop->workspace().frontmostApplication()->localizedName, "Editor");
  EXPECT_TRUE(isDirectlyBeneath(overlay(leftScreen), window)) << "the cover stays where it was";
  type(escapeKey);
  open();
  // The language menu, the settings, the pods.
  for (int stop = 0; stop < 3; ++stop) type(tabKey);
  type(spaceKey);
  EXPECT_EQ(state().userMode(), VeilMode::standard);
  type(tabKey);
  type(returnKey);
  EXPECT_EQ(state().userMode(), VeilMode::cleanDesktop);
  type(tabKey, platform::modifier::shift);
  type(returnKey);
  EXPECT_EQ(state().userMode(), VeilMode::standard);
  EXPECT_EQ(panelCount(), 1u);
}

TEST_F(PanelTest, ATooltipComesAfterAPauseAndGoesWithThePointer) {
  launch();
  open();
  desktop->pointer().moveTo(middleOf("🇬🇧"));
  desktop->advance(0.3);
  EXPECT_EQ(panelCount(), 1u);
  desktop->advance(0.5);
  ASSERT_EQ(panelCount(), 2u);
  EXPECT_TRUE(shows("Language"));
  desktop->pointer().moveTo(middleOf("Quit"));
  desktop->drain();
  EXPECT_EQ(panelCount(), 1u);
}

TEST_F(PanelTest, TheIconTellsTheModeWhereThePointerRestsUnlessThePanelIsOpen) {
  launch();
  const auto restOnIcon = [&] {
    desktop->pointer().moveTo({500, 500});
    desktop->pointer().moveTo(icon());
    desktop->advance(0.7);
  };
  restOnIcon();
  ASSERT_EQ(panelCount(), 1u);
  EXPECT_TRUE(shows("Hushpane: Standard"));
  EXPECT_GE(outline().y, barHeight) << "beneath the icon";
  EXPECT_NEAR(outline().x + outline().width / 2, icon().x, 1);
  desktop->pointer().moveTo({500, 500});
  desktop->drain();
  EXPECT_EQ(panelCount(), 0u);
  restOnIcon();
  state().setMode(VeilMode::focus);
  desktop->drain();
  EXPECT_EQ(panelCount(), 0u) << "it says what is no longer so";
  restOnIcon();
  EXPECT_TRUE(shows("Hushpane: Focus"));
  open();
  EXPECT_FALSE(shows("Hushpane: Focus"));
  EXPECT_EQ(panelCount(), 1u);
  restOnIcon();
  EXPECT_EQ(panelCount(), 1u);
  desktop->statusItem().setFrameUntold(true);
  type(escapeKey);
  restOnIcon();
  EXPECT_EQ(panelCount(), 0u) << "the desktop shows its own";
}

TEST_F(PanelTest, QuitsByRowAndByKeyAndEndsTheProgram) {
  for (const auto modifiers : {platform::modifier::control, platform::modifier::command}) {
    relaunchWithIcon();
    type(letterQ);
    EXPECT_FALSE(desktop->application().isTerminated());
    type(letterQ, modifiers);
    EXPECT_TRUE(desktop->application().isTerminated());
    EXPECT_EQ(panelCount(), 0u);
  }
  relaunchWithIcon();
  click("Quit");
  EXPECT_TRUE(desktop->application().isTerminated());
  EXPECT_FALSE(desktop->statusItem().isShown());
}

TEST_F(PanelTest, FollowsTheAppearanceOfTheDesktopWhileItIsOpen) {
  launch();
  open();
  const auto ground = [&] { return *desktop->pixel({outline().x + 180, outline().bottom() - 4}) & 0xff; };
  EXPECT_GT(ground(), 200u);
  desktop->appearance().setDark(true);
  desktop->drain();
  EXPECT_LT(ground(), 80u);
}

TEST_F(PanelTest, AnswersOfTheUpdaterAreShownWhereTheDesktopShowsNone) {
  launch();
  desktop->updateService().setAnswer({.kind = platform::UpdateAnswer::Kind::none});
  CorvaneUpdater::shared().checkForUpdates();
  desktop->drain();
  EXPECT_EQ(desktop->userNotifications().posted().size(), 1u);
  EXPECT_EQ(panelCount(), 0u);
  desktop->userNotifications().setAbsent(true);
  CorvaneUpdater::shared().checkForUpdates();
  desktop->drain();
  EXPECT_EQ(panelCount(), 1u);
  desktop->advance(10);
  EXPECT_EQ(panelCount(), 0u) << "it goes by itself";
}

class FirstLaunchTest : public PanelTest {
 protected:
  void SetUp() override {
    PanelTest::SetUp();
    store(storedKeys::hasSeenWelcome, false);
  }
};

TEST_F(FirstLaunchTest, TheHintPointsAtTheIconUntilTheFirstClickWhichReachesItsTarget) {
  launch();
  desktop->advance(0.85);
  EXPECT_EQ(panelCount(), 0u);
  desktop->advance(0.2);
  ASSERT_EQ(panelCount(), 1u);
  auto& hint = *desktop->panels().shown().front();
  const Rect item = *desktop->statusItem().frame();
  EXPECT_EQ(hint.frame(), (Rect{item.x + item.width / 2 - 93, item.bottom() - 17, 186, 75}));
  MenuBarHintWindowController::shared().show();
  desktop->advance(1);
  EXPECT_EQ(panelCount(), 1u) << "one is enough";
  EXPECT_EQ(hint.presentationAlpha(), 1);
  click(icon());
  settle();
  EXPECT_TRUE(shows("Get started")) << "the click went through the hint";
  EXPECT_FALSE(shows("Hushpane is here"));
  click("Get started");
  EXPECT_TRUE(shows("Quit"));
  EXPECT_EQ(stored(storedKeys::hasSeenWelcome), platform::Value(true));
}

// Where the hint's tail ends, on the desktop.
platform::Point tipOf(const sim::SimPanel& hint, bool isBelow) {
  const platform::Rect bounds = hint.outline().controlBounds();
  const double y = isBelow ? bounds.bottom() : bounds.y;
  for (const auto& segment : hint.outline().segments())
    if (segment.verb == platform::Path::Verb::line && segment.points[0].y == y && segment.points[0].x > bounds.x + 20 &&
        segment.points[0].x < bounds.right() - 19)
      return {hint.frame().x + segment.points[0].x, hint.frame().y + y};
  return {};
}

TEST_F(FirstLaunchTest, TheHintGoesByItselfAndNeedsAnIcon) {
  launch();
  const auto monitors = desktop->eventMonitors().monitorCount();
  desktop->advance(1.1);
  ASSERT_EQ(panelCount(), 1u);
  desktop->advance(9.6);
  EXPECT_EQ(panelCount(), 1u);
  desktop->advance(0.6);
  EXPECT_EQ(panelCount(), 0u);
  desktop->setStatusBar(Bar::none);
  auto& hint = MenuBarHintWindowController::shared();
  hint.show();
  desktop->advance(30);
  desktop->setStatusBar(Bar::top);
  desktop->advance(30);
  EXPECT_EQ(panelCount(), 0u);
  EXPECT_EQ(desktop->eventMonitors().monitorCount(), monitors);
}

TEST_F(FirstLaunchTest, TheHintWaitsForTheIconToStandStill) {
  launch();
  auto& hint = MenuBarHintWindowController::shared();
  desktop->setStatusBar(Bar::none);
  desktop->advance(2);
  desktop->setStatusBar(Bar::top);
  desktop->advance(0.4);
  desktop->setStatusBar(Bar::bottom);
  desktop->advance(0.4);
  EXPECT_EQ(panelCount(), 0u);
  desktop->advance(0.4);
  ASSERT_EQ(panelCount(), 1u);
  EXPECT_LE(outline().bottom(), desktop->statusItem().frame()->y) << "above an icon at the bottom";
  EXPECT_NEAR(tipOf(*desktop->panels().shown().front(), true).x, icon().x, 1) << "its tail points down";
  hint.dismiss();
  desktop->advance(0.3);

  const auto shownAfter = [&](double seconds) {
    for (double passed = 0; passed < seconds; passed += 0.2) {
      desktop->setStatusBar(desktop->statusItem().bar() == Bar::top ? Bar::bottom : Bar::top);
      desktop->advance(0.2);
    }
    return panelCount() == 1;
  };
  hint.show();
  EXPECT_FALSE(shownAfter(4));
  EXPECT_TRUE(shownAfter(2)) << "but not for ever";
  hint.dismiss();
  desktop->advance(0.3);

  hint.show();
  click(Point{500, 500});
  desktop->advance(3);
  EXPECT_EQ(panelCount(), 0u) << "a click before it came";
}

TEST_F(FirstLaunchTest, TheHintPointsAtTheBarWhereTheDesktopDoesNotTellTheIconsPlace) {
  desktop->statusItem().setFrameUntold(true);
  launch();
  auto& hint = MenuBarHintWindowController::shared();
  for (const bool isBelow : {false, true}) {
    SCOPED_TRACE(isBelow);
    desktop->screens().setBars(isBelow ? 0 : 40, isBelow ? 40 : 0);
    desktop->pointer().moveTo({1500, 400});
    hint.show();
    desktop->advance(1.2);
    ASSERT_EQ(panelCount(), 1u);
    EXPECT_EQ(isBelow ? outline().bottom() : outline().y, isBelow ? 759 : 41) << "beside the bar";
    EXPECT_LE(outline().right(), 1000) << "inside the display of the bar, wherever the pointer is";
    EXPECT_GE(tipOf(*desktop->panels().shown().front(), isBelow).x, 960);
    hint.dismiss();
    desktop->advance(0.3);
  }
}

}  // namespace
}  // namespace hushpane::tests

#include "tests/x11/panel_desktop.h"

namespace hushpane::x11_tests {
namespace {

constexpr std::uint16_t escapeCode = 53, tabCode = 48, spaceCode = 49;
constexpr Point gear{336, 24};  // on the panel, whose menu page is 360 points wide

class PanelX11Test : public PanelDesktop {
 protected:
  PanelX11Test() { startTray(); }
};
HUSHPANE_RUN_BOTH_WAYS(PanelX11Test);

TEST_P(PanelX11Test, SwitchesModesAndSurfacesWithTheMouse) {
  startWithIcon();
  const Point at = center(*icon());
  runTool({"xdotool", "mousemove", std::to_string(int(at.x)), std::to_string(int(at.y))});
  ASSERT_TRUE(hasPanels(1)) << "the tooltip";
  EXPECT_LE(panels().front().bottom(), icon()->y + 9) << "above the icon but for its shadow";
  clickIcon();
  EXPECT_TRUE(looksAsItShould());
  click("Focus");
  EXPECT_TRUE(entersMode("focus"));
  EXPECT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  EXPECT_TRUE(shows(red_->spot(), red_->color())) << "the program in front stays in front, and clear";
  EXPECT_EQ(x().activeWindow(), red_->window());
  EXPECT_TRUE(looksAsItShould()) << "the panel lies above the covers";
  shot("panel-focus-" + wayName());
  click("Subtle");
  EXPECT_TRUE(shows(leftSpot, dimmed(background, subtle)));
  click("Strong");
  EXPECT_TRUE(shows(leftSpot, dimmed(background, strong)));
  click("Ambience");
  EXPECT_TRUE(entersMode("cleanDesktop"));
  EXPECT_TRUE(shows(green_->spot(), green_->color()));
  EXPECT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  click("Standard");
  EXPECT_TRUE(entersMode("standard"));
  EXPECT_TRUE(shows(leftSpot, background));
  clickIcon();
  EXPECT_TRUE(hasPanels(0));
  EXPECT_TRUE(shows(leftSpot, background));
}

TEST_P(PanelX11Test, ClosesInEveryWayAndOpensAgainForTheKeyboard) {
  startWithIcon();
  clickIcon();
  keyboard("type", "xyz");
  EXPECT_EQ(x().activeWindow(), red_->window()) << "the front program keeps its place";
  key("Escape", escapeCode);
  EXPECT_TRUE(hasPanels(0));
  clickIcon();
  clickElsewhere(green_->spot());
  EXPECT_TRUE(hasPanels(0));
  EXPECT_TRUE(waitUntil([&] { return x().activeWindow() == green_->window(); })) << "the click reaches its target";
  keyboard("key", "a");
  keyboard("key", "Return");
  EXPECT_TRUE(waitUntil([&] { return green_->typed() == "a\n"; })) << "the keyboard is everybody's again";
  EXPECT_EQ(red_->typed(), "");
  clickIcon();
  activate(blue_->window());
  EXPECT_TRUE(hasPanels(0)) << "another program came to the front";
  twin().type(escapeCode);
  clickIcon();
  EXPECT_TRUE(looksAsItShould());
  // Twenty clicks a second for ten seconds; an even number leaves it as it was.
  const Point at = center(*icon());
  runTool({"xdotool", "mousemove", std::to_string(int(at.x)), std::to_string(int(at.y))});
  for (int second = 0; second < 10; ++second) runTool({"xdotool", "click", "--repeat", "20", "--delay", "50", "1"});
  EXPECT_TRUE(hasPanels(1));
  EXPECT_TRUE(looksAsItShould());

  for (int stop = 0; stop < 5; ++stop) key("Tab", tabCode);
  EXPECT_TRUE(looksAsItShould()) << "with a ring around the third mode";
  shot("panel-keyboard-" + wayName());
  key("space", spaceCode);
  EXPECT_TRUE(entersMode("focus"));
  key("shift+Tab", tabCode, platform::modifier::shift);
  key("Return", 36);
  EXPECT_TRUE(entersMode("cleanDesktop"));
  keyboard("key", "ctrl+alt+s");
  EXPECT_TRUE(entersMode("standard")) << "hot keys work on meanwhile";
  keyboard("key", "ctrl+q");
  EXPECT_EQ(hushpane().wait(), 0);
}

TEST_P(PanelX11Test, AnotherLanguageIsChosenInAListAndMirrorsThePages) {
  startWithIcon();
  clickIcon();
  click("Focus");
  EXPECT_TRUE(looksAsItShould()) << "at rest, so that the list opens beside its button";
  click("🇬🇧");
  EXPECT_TRUE(looksAsItShould()) << "the list of languages";
  shot("languages-" + wayName());
  click("🇸🇦  العربية");
  EXPECT_TRUE(looksAsItShould());
  EXPECT_EQ(settings().value("hushpane.language"), "ar");
  clickAt({360 - gear.x, gear.y});
  EXPECT_TRUE(looksAsItShould()) << "the preferences";
  shot("preferences-ar-" + wayName());
}

TEST_P(PanelX11Test, TheFirstLaunchPointsAtTheIcon) {
  startWithIcon(false);
  EXPECT_TRUE(hasPanels(1)) << "the hint";
  std::this_thread::sleep_for(500ms);
  const Rect hint = panels().front();
  EXPECT_EQ(hint.width, 186);
  EXPECT_EQ(hint.x + 18, 0) << "inside the display, as near to the icon as it can be";
  EXPECT_LE(hint.bottom() - 18, icon()->y + 1) << "above an icon at the bottom";
  shot("hint-" + wayName());
  Session::click(green_->spot());
  EXPECT_TRUE(hasPanels(0)) << "any click sends it away";
  EXPECT_TRUE(waitUntil([&] { return x().activeWindow() == green_->window(); })) << "and reaches its target";
  twin().desktop().advance(1);
  twin().click({20, 20});
  clickIcon();
  EXPECT_TRUE(looksAsItShould());
  shot("welcome-" + wayName());
}

TEST_P(PanelX11Test, AnotherTrayGetsTheIconAndWithoutOneASecondStartOpensThePanel) {
  startBus();
  startWithIcon();
  clickIcon();
  endTray();
  EXPECT_TRUE(waitUntil([&] { return !icon(); }));
  startTray();
  ASSERT_TRUE(waitUntil([&] { return icon().has_value(); }));
  key("Escape", escapeCode);
  clickIcon();
  EXPECT_TRUE(looksAsItShould());
  key("Escape", escapeCode);
  endTray();
  EXPECT_TRUE(waitUntil([&] { return !icon(); }));
  runTool({"xdotool", "mousemove", "300", "300"});
  EXPECT_EQ(runHushpane({})->wait(), 0);
  ASSERT_TRUE(hasPanels(1));
  twin().desktop().setStatusBar(sim::SimStatusItem::Bar::none);
  twin().desktop().application().reopen();
  twin().settle();
  waitForTwin();
  const Rect frame = panels().front(), inside = twin().outline(0);
  EXPECT_NEAR(frame.x + inside.right(), leftMonitor.right(), 8) << "at the top right of the display";
  EXPECT_NEAR(frame.y + inside.y, 0, 8);
  EXPECT_TRUE(looksAsItShould());
}

}  // namespace
}  // namespace hushpane::x11_tests

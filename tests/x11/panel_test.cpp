#include <fstream>

#include "tests/x11/panel_desktop.h"

namespace hushpane::x11_tests {
namespace {

constexpr std::uint16_t escapeCode = 53, tabCode = 48, spaceCode = 49;
// On the panel, whose menu page is 360 points wide with margins of 12 and a header of 24.
constexpr Point gear{336, 24}, backArrow{23, 23};

class PanelX11Test : public PanelDesktop {};

TEST_P(PanelX11Test, SwitchesModesAndSurfacesWithTheMouse) {
  startTray();
  startWithIcon();
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
  EXPECT_EQ(settings().value("hushpane.focusDimIntensity"), "strong");
  click("Ambience");
  EXPECT_TRUE(entersMode("cleanDesktop"));
  EXPECT_TRUE(shows(green_->spot(), green_->color()));
  EXPECT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  const Pixel dim = x().pixel(leftSpot);
  click("Wallpaper");
  EXPECT_TRUE(waitUntil([&] { return !isNear(x().pixel(leftSpot), dim); })) << "the default wallpaper";
  click("Blur");
  EXPECT_TRUE(looksAsItShould());
  const Pixel plain = settledPicture().at(int(leftSpot.x), int(leftSpot.y));
  click("On");
  EXPECT_TRUE(waitUntil([&] { return !isNear(x().pixel(leftSpot), plain); })) << "the gradient";
  shot("panel-gradient-" + wayName());
  click("Off");
  click("Standard");
  EXPECT_TRUE(entersMode("standard"));
  EXPECT_TRUE(shows(leftSpot, background));
  clickIcon();
  EXPECT_TRUE(hasPanels(0));
  EXPECT_TRUE(shows(leftSpot, background));
}

TEST_P(PanelX11Test, ClosesInEveryWayAndOpensAgain) {
  startTray();
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
  EXPECT_TRUE(hushpane().isRunning());
}

TEST_P(PanelX11Test, TheKeyboardWalksChoosesAndQuits) {
  startTray();
  startWithIcon();
  clickIcon();
  for (int stop = 0; stop < 5; ++stop) key("Tab", tabCode);
  EXPECT_TRUE(looksAsItShould()) << "with a ring around the third mode";
  shot("panel-keyboard-" + wayName());
  key("space", spaceCode);
  EXPECT_TRUE(entersMode("focus"));
  key("shift+Tab", tabCode, platform::modifier::shift);
  key("Return", 36);
  EXPECT_TRUE(entersMode("cleanDesktop"));
  // Hot keys work on meanwhile.
  keyboard("key", "ctrl+alt+s");
  EXPECT_TRUE(entersMode("standard"));
  keyboard("key", "ctrl+q");
  EXPECT_EQ(hushpane().wait(), 0);
  EXPECT_TRUE(shows(leftSpot, background));
}

HUSHPANE_RUN_BOTH_WAYS(PanelX11Test);

class PanelPagesX11Test : public PanelDesktop {};

TEST_P(PanelPagesX11Test, ThePreferencesTakeEffect) {
  startTray();
  startWithIcon(true, {{"hushpane.lastUserMode", xml("focus")}});
  twin().desktop().application().openUrls({"hushpane://mode/focus"});
  twin().settle();
  clickIcon();
  clickAt(gear);
  EXPECT_TRUE(looksAsItShould());
  shot("preferences");
  EXPECT_TRUE(shows(rightSpot, dimmed(background, balanced)));
  click("Apply to all displays");
  click("RIGHT");
  EXPECT_TRUE(shows(rightSpot, background));
  EXPECT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  shot("preferences-displays");
  click("RIGHT");
  EXPECT_TRUE(shows(rightSpot, dimmed(background, balanced)));
  click("Keyboard shortcuts");
  keyboard("key", "ctrl+alt+s");
  EXPECT_TRUE(keeps(leftSpot, dimmed(background, balanced), 300ms)) << "the hot keys are given back";
  click("Keyboard shortcuts");
  keyboard("key", "ctrl+alt+s");
  EXPECT_TRUE(entersMode("standard"));
  keyboard("key", "ctrl+alt+f");
  EXPECT_TRUE(entersMode("focus"));
  click("⇧");
  EXPECT_EQ(settings().value("hushpane.revealModifier"), "shift");
  keyboard("keydown", "shift");
  EXPECT_TRUE(shows(leftSpot, background)) << "the new key lifts the cover";
  keyboard("keyup", "shift");
  EXPECT_TRUE(shows(leftSpot, dimmed(background, balanced)));
  const auto autostart = settings().path().parent_path().parent_path() / "autostart/com.corvane.Hushpane.desktop";
  click("Launch at login");
  EXPECT_TRUE(waitUntil([&] { return std::filesystem::exists(autostart); }));
  click("Launch at login");
  EXPECT_TRUE(waitUntil([&] { return !std::filesystem::exists(autostart); }));
  click("Shake mouse to reset mode");
  clickAt(backArrow);
  EXPECT_TRUE(looksAsItShould());
  click("Quit");
  EXPECT_EQ(hushpane().wait(), 0);
}

TEST_P(PanelPagesX11Test, EveryTextChangesWithTheLanguage) {
  startTray();
  startWithIcon(true, {{"hushpane.lastUserMode", xml("focus")}});
  twin().desktop().application().openUrls({"hushpane://mode/focus"});
  twin().settle();
  clickIcon();
  std::string flag = "🇬🇧";
  const std::vector<std::array<std::string, 3>> languages{
      {"en", "🇬🇧  English", "🇬🇧"}, {"de", "🇩🇪  Deutsch", "🇩🇪"}, {"ar", "🇸🇦  العربية", "🇸🇦"}};
  for (const auto& [code, entry, shownFlag] : languages) {
    EXPECT_TRUE(looksAsItShould()) << "at rest, so that the list opens beside its button";
    click(flag);
    EXPECT_TRUE(looksAsItShould()) << "the list of languages";
    shot("languages-" + code);
    click(entry);
    flag = shownFlag;
    EXPECT_TRUE(looksAsItShould()) << code;
    shot("menu-" + code);
    EXPECT_EQ(settings().value("hushpane.language"), code);
    const bool isMirrored = code == "ar";
    clickAt(isMirrored ? Point{360 - gear.x, gear.y} : gear);
    EXPECT_TRUE(looksAsItShould()) << code << ", preferences";
    shot("preferences-" + code);
    clickAt(isMirrored ? Point{360 - backArrow.x, backArrow.y} : backArrow);
  }
}

INSTANTIATE_TEST_SUITE_P(Desktop, PanelPagesX11Test, testing::Values(true), [](const auto&) { return "Composited"; });

class TrayX11Test : public PanelDesktop {};

TEST_P(TrayX11Test, TheFirstLaunchPointsAtTheIcon) {
  startTray();
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
  click("Get started");
  EXPECT_TRUE(looksAsItShould());
  hushpane().terminate();
  startHushpane();
  EXPECT_TRUE(waitUntil([&] { return icon().has_value(); }));
  EXPECT_TRUE(holdsFor(800ms, [&] { return panels().empty(); })) << "no hint the next time";
}

TEST_P(TrayX11Test, AnotherTrayGetsTheIconAndWithoutOneASecondStartOpensThePanel) {
  startBus();
  startTray();
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

HUSHPANE_RUN_BOTH_WAYS(TrayX11Test);

}  // namespace
}  // namespace hushpane::x11_tests

#include "ui/preferences/preferences_view.h"

#include "input/shortcut_registry.h"
#include "localization/language_manager.h"
#include "support/page.h"
#include "ui/global_accent.h"
#include "ui/localized_root.h"
#include "ui/preferences/shortcut_label.h"

namespace hushpane::tests {
namespace {

using namespace declarative;
using Action = HushpaneShortcut::Action;

constexpr double settled = 2;  // seconds after which nothing moves any more

class PreferencesViewTest : public PageTest {
 protected:
  void SetUp() override {
    PageTest::SetUp();
    launch();
  }

  PreferencesStore& preferences() { return PreferencesStore::shared(); }
  ShortcutRegistry& registry() { return ShortcutRegistry::shared(); }
  Page page() {
    return show(LocalizedRoot{[this] { return PreferencesView{preferences()}; }});
  }

  // Whether the knob of the switch in that row stands on its right.
  static bool isOn(const Page& page, const std::string& row) {
    const double y = page.text(row).center().y;
    for (const auto& knob : page.fillsOf(14, 14))
      if (std::abs(knob.center().y - y) < 5) return knob.center().x > 360 - 24 - 17;
    ADD_FAILURE() << row << " has no switch";
    return false;
  }
  static bool isBarLit(const Page& page, const std::string& display) {
    const double y = page.text(display).center().y;
    for (const auto& bar : page.fillsOf(3.5, 18))
      if (std::abs(bar.center().y - y) < 5) return hasColor(bar, globalAccent.light);
    ADD_FAILURE() << display << " has no bar";
    return false;
  }
  void toggle(Page& page, const char* row) {
    page.click(row);
    page.advance(settled);
  }
};

const std::string standardKeys = "Standard \u2068⌃⌥S\u2069", cleanDesktopKeys = "Ambience \u2068⌃⌥A\u2069",
                  focusKeys = "Focus \u2068⌃⌥F\u2069", separator = "  ·  ";

TEST_F(PreferencesViewTest, ThePageIs360WideWithItsRowsInTheirOrder) {
  desktop->bundle().setInfoString("CFBundleShortVersionString", "1.2");
  const auto shown = page();
  EXPECT_EQ(shown.words(), (std::vector<std::string>{"Settings",
                                                     "GENERAL",
                                                     "Launch at login",
                                                     "Shake mouse to reset mode",
                                                     "Apply to all displays",
                                                     "SHORTCUTS",
                                                     "Keyboard shortcuts",
                                                     standardKeys,
                                                     separator,
                                                     cleanDesktopKeys,
                                                     separator,
                                                     focusKeys,
                                                     "Reveal key",
                                                     "⌥",
                                                     "⇧",
                                                     "⌃",
                                                     "⌘",
                                                     "UPDATES",
                                                     "Automatically check for updates",
                                                     "Check for updates now",
                                                     "Version 1.2",
                                                     "Rate Hushpane",
                                                     "Contact Us"}));
  EXPECT_EQ(shown.size().width, 360);
  EXPECT_EQ(shown.fillsOf(primary.opacity(0.04).light).size(), 3u) << "a card for each section";
  EXPECT_NEAR(shown.text("Version 1.2").frame.y, shown.text("Rate Hushpane").frame.y, 0.51) << "on one baseline";
}

TEST_F(PreferencesViewTest, LaunchAtLoginFollowsTheDesktopAndKeepsTheUsersChoiceWhenItRefuses) {
  storage.isLoginItem = true;
  auto shown = page();
  EXPECT_TRUE(isOn(shown, "Launch at login"));
  toggle(shown, "Launch at login");
  EXPECT_FALSE(storage.isLoginItem);
  desktop->loginItem().setRefuses(true);
  toggle(shown, "Launch at login");
  EXPECT_FALSE(storage.isLoginItem);
  EXPECT_TRUE(isOn(shown, "Launch at login"));
  EXPECT_FALSE(isOn(page(), "Launch at login")) << "read again when it comes on screen";
}

TEST_F(PreferencesViewTest, ShakeIsStoredAndFollowsOtherWriters) {
  auto shown = page();
  EXPECT_FALSE(isOn(shown, "Shake mouse to reset mode"));
  toggle(shown, "Shake mouse to reset mode");
  EXPECT_EQ(stored(storedKeys::mouseShakeEnabled), platform::Value(true));
  desktop->userDefaults().set(storedKeys::mouseShakeEnabled, platform::Value(false));
  shown.advance(settled);
  EXPECT_FALSE(isOn(shown, "Shake mouse to reset mode"));
}

TEST_F(PreferencesViewTest, DisplaysAreChosenOneByOneUntilAllAreCoveredAgain) {
  state().setMode(VeilMode::cleanDesktop);
  auto shown = page();
  EXPECT_FALSE(shown.shows("Left"));
  toggle(shown, "Apply to all displays");
  EXPECT_TRUE(isBarLit(shown, "Left"));
  EXPECT_GT(shown.text("Right").frame.y, shown.text("Left").frame.y);

  shown.click("Left");
  EXPECT_EQ(stored(storedKeys::displayEnablement), platform::Value(platform::Dictionary{{"7", false}}));
  EXPECT_TRUE(overlay(leftScreen).isVisible()) << "fades out";
  shown.advance(settled);
  EXPECT_FALSE(overlay(leftScreen).isVisible());
  EXPECT_TRUE(overlay(rightScreen).isVisible());
  EXPECT_FALSE(isBarLit(shown, "Left"));
  EXPECT_TRUE(isBarLit(shown, "Right"));

  shown.click("Apply to all displays");
  EXPECT_EQ(stored(storedKeys::displayEnablement), platform::Value(platform::Dictionary{}));
  EXPECT_EQ(overlay(leftScreen).presentationAlpha(), 1) << "at once";
  shown.advance(settled);
  EXPECT_FALSE(shown.shows("Left"));
}

TEST_F(PreferencesViewTest, TheRowsFollowTheDisplays) {
  preferences().applyToAllDisplays = false;
  auto shown = page();
  desktop->screens().remove(7);
  shown.advance(settled);
  EXPECT_FALSE(shown.shows("Right")) << "one display leaves nothing to choose";
  desktop->screens().add({{0, 800, 1000, 800}, 11, "", 1});
  desktop->screens().add({{0, 1600, 1000, 800}, std::nullopt, "Unknown", 1});
  shown.advance(settled);
  EXPECT_TRUE(shown.shows("Right"));
  EXPECT_TRUE(shown.shows("Display 2"));
  EXPECT_FALSE(shown.shows("Unknown"));
}

TEST_F(PreferencesViewTest, TheShortcutsAreSwitchedTogether) {
  registry().setEnabled(false, Action::setStandard);
  registry().setEnabled(false, Action::toggleCleanDesktop);
  auto shown = page();
  EXPECT_TRUE(isOn(shown, "Keyboard shortcuts")) << "one is enough";
  toggle(shown, "Keyboard shortcuts");
  for (const auto& shortcut : registry().shortcuts()) EXPECT_FALSE(shortcut.enabled);
  EXPECT_EQ(desktop->hotKeys().registeredCount(), 0u);
  EXPECT_FALSE(shown.shows(focusKeys));
  toggle(shown, "Keyboard shortcuts");
  for (const auto& shortcut : registry().shortcuts()) EXPECT_TRUE(shortcut.enabled);
  EXPECT_EQ(desktop->hotKeys().registeredCount(), 3u);
  EXPECT_TRUE(shown.shows(focusKeys));
}

TEST_F(PreferencesViewTest, AKeyOfAnotherProgramIsStruckThroughAndToldByTheNamesOfItsKeys) {
  using platform::modifier::control, platform::modifier::option;
  constexpr std::uint16_t keyF = 3, keyG = 5;
  auto shown = page();
  const auto tooltip = [&](const std::string& words) { return shown.host().tooltip(shown.text(words).center()); };
  const auto isStruck = [&](const std::string& words) {
    const auto place = shown.text(words).frame;
    return !shown.fillsOf(place.width, 1).empty() && shown.fillsOf(place.width, 1).front().frame.x == place.x;
  };
  EXPECT_EQ(tooltip(focusKeys), "Ctrl+Alt+F");
  EXPECT_FALSE(isStruck(focusKeys));
  desktop->hotKeys().take(keyG, control | option);
  desktop->hotKeys().swapPlaces(keyF, keyG);
  shown.advance(settled);
  EXPECT_EQ(tooltip(focusKeys), "Ctrl+Alt+F is used by another program") << "while the page is open";
  EXPECT_TRUE(isStruck(focusKeys));
  EXPECT_EQ(tooltip(standardKeys), "Ctrl+Alt+S");
  EXPECT_FALSE(isStruck(standardKeys));
  LanguageManager::shared().select("de");
  shown.advance(settled);
  EXPECT_EQ(tooltip("Fokus \u2068⌃⌥F\u2069"), "Strg+Alt+F wird von einem anderen Programm verwendet");
  desktop->hotKeys().giveBack(keyF, control | option);
  page();
  EXPECT_EQ(tooltip("Fokus \u2068⌃⌥F\u2069"), "Strg+Alt+F") << "asked for again as the page comes on screen";
}

TEST_F(PreferencesViewTest, ShortcutsAreWrittenWithTheirModifiersInOrder) {
  using platform::modifier::command, platform::modifier::control, platform::modifier::option, platform::modifier::shift;
  const HushpaneShortcut all{Action::setStandard, false, 0, command | shift | option | control};
  const HushpaneShortcut unnamed{Action::setStandard, false, 9, 0};
  EXPECT_EQ(shortcutLabel(&all), "⌃⌥⇧⌘A");
  EXPECT_EQ(shortcutLabel(&unnamed), "?");
  EXPECT_EQ(shortcutLabel(nullptr), "—");

  registry().setShortcuts({{Action::setStandard, true, 0, all.modifiersRaw},
                           {Action::toggleCleanDesktop, true, 1, all.modifiersRaw},
                           {Action::toggleFocus, true, 3, all.modifiersRaw}});
  LanguageManager::shared().select("ro");
  const auto shown = page();
  const auto first = shown.text("Standard \u2068⌃⌥⇧⌘A\u2069"), last = shown.text("Concentrare \u2068⌃⌥⇧⌘F\u2069");
  EXPECT_LE(last.frame.right(), 360 - 24);
  EXPECT_EQ(first.as<DrawnText>()->layout->size().height, last.as<DrawnText>()->layout->size().height)
      << "all parts shrink alike";
  EXPECT_FALSE(last.as<DrawnText>()->layout->isTruncated());
}

TEST_F(PreferencesViewTest, TheRevealKeyTakesEffectAtOnce) {
  preferences().revealModifierRaw = "hyper";
  auto shown = page();
  EXPECT_TRUE(hasColor(shown.text("⌥"), platform::black)) << "stands in for an unknown one";
  LanguageManager::shared().select("de");
  shown.advance(settled);
  for (const auto& [sign, name] : {std::pair{"⌥", "Alt"}, {"⇧", "Umschalt"}, {"⌃", "Strg"}, {"⌘", "Super"}})
    EXPECT_EQ(shown.host().tooltip(shown.text(sign).center()), name);
  shown.click("⌘");
  shown.advance(settled);
  EXPECT_EQ(stored(storedKeys::revealModifier), platform::Value("command"));
  EXPECT_EQ(state().revealMonitor().modifier, RevealModifier::command);
  EXPECT_TRUE(hasColor(shown.text("⌘"), platform::black));
}

TEST_F(PreferencesViewTest, UpdatesAreSwitchedAndAskedFor) {
  auto shown = page();
  EXPECT_TRUE(isOn(shown, "Automatically check for updates"));
  toggle(shown, "Automatically check for updates");
  EXPECT_FALSE(storage.checksForUpdates);
  EXPECT_FALSE(isOn(shown, "Automatically check for updates"));
  shown.click({300, shown.text("Check for updates now").center().y});
  EXPECT_EQ(desktop->userNotifications().posted().size(), 1u) << "the whole row answers";
}

TEST_F(PreferencesViewTest, TheLinksLeadToTheReviewFormAndTheSupportMailbox) {
  auto shown = page();
  shown.click("Rate Hushpane");
  shown.click("Contact Us");
  const auto& opened = desktop->workspace().openedURLs();
  ASSERT_EQ(opened.size(), 2u);
  EXPECT_TRUE(opened[0].starts_with("https://")) << opened[0];
  EXPECT_TRUE(opened[1].starts_with("mailto:")) << opened[1];
}

TEST_F(PreferencesViewTest, TheVersionIsTheShortOneElseTheBuildsElseADash) {
  auto& bundle = desktop->bundle();
  bundle.setInfoString("CFBundleShortVersionString", "");
  bundle.setInfoString("CFBundleVersion", "88");
  EXPECT_TRUE(page().shows("Version 88"));
  bundle.setInfoString("CFBundleVersion", "");
  EXPECT_TRUE(page().shows("Version —"));
}

}  // namespace
}  // namespace hushpane::tests

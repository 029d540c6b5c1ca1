#include "ui/menu/menu_root_view.h"

#include "localization/language_manager.h"
#include "localization/supported_language.h"
#include "support/page.h"
#include "ui/localized_root.h"

namespace hushpane::tests {
namespace {

using namespace declarative;

constexpr double settled = 2;  // seconds after which nothing moves any more
const std::string quitKeys = "\u2068⌘Q\u2069";

class MenuRootViewTest : public PageTest {
 protected:
  void SetUp() override {
    PageTest::SetUp();
    launch();
  }

  Page menu(const Environment& environment = {}) {
    return show(LocalizedRoot{[this] {
                  return MenuRootView{state(), PreferencesStore::shared(), [] {}};
                }},
                environment);
  }
  static constexpr platform::Point flag{302, 24};
  // The pod with the mark of the mode in force; empty when none has it.
  static std::string activePodTitle(const Page& page) {
    const auto marks = page.all(
        [](const Shown& shown) { return shown.as<FilledPath>() && hasSize(shown, 4, 4) && shown.opacity > 0.99; });
    if (marks.size() != 1) return "";
    for (const std::string title : {"Standard", "Ambience", "Focus"}) {
      const auto pod = page.text(title).frame;
      if (marks[0].frame.x > pod.x && marks[0].frame.x < pod.x + 105) return title;
    }
    return "";
  }
};

TEST_F(MenuRootViewTest, ThePageIs360WideWithItsRowsInTheirOrder) {
  auto page = menu();
  page.advance(settled);
  EXPECT_EQ(page.words(), (std::vector<std::string>{"Hushpane", "🇬🇧", "Standard", "Ambience", "Focus",
                                                    "Desktop as usual", "Hold ⌥ Option to Reveal", "Quit", quitKeys}));
  EXPECT_EQ(page.size().width, 360);
  EXPECT_EQ(page.text("Hushpane").frame.x, 12);
  EXPECT_EQ(page.host().tooltip({336, 24}), "Settings");
  EXPECT_EQ(page.host().tooltip(page.text(quitKeys).center()), "Ctrl+Q or Super+Q");
  const auto pods = page.all([](const Shown& shown) { return shown.as<FilledPath>() && shown.frame.height > 40; });
  ASSERT_EQ(pods.size(), 3u);
  for (const auto& pod : pods) EXPECT_NEAR(pod.frame.width, (336 - 2 * 10) / 3.0, 1);
  EXPECT_NEAR(page.text(quitKeys).frame.right(), 360 - 24, 0.51);
}

TEST_F(MenuRootViewTest, APodChoosesItsModeAndTheCardComesWithIt) {
  auto page = menu();
  page.advance(settled);
  const double height = page.size().height;
  EXPECT_EQ(activePodTitle(page), "Standard");
  page.click("Focus");
  page.leave();
  EXPECT_EQ(state().userMode(), VeilMode::focus);
  EXPECT_EQ(page.text("Only the active app").opacity, 1) << "at once";
  page.advance(0.1);
  EXPECT_GT(page.text("Surface").opacity, 0);
  EXPECT_LT(page.text("Surface").opacity, 1);
  page.advance(settled);
  EXPECT_EQ(activePodTitle(page), "Focus");
  EXPECT_NEAR(page.size().height, height + 46 + 6, 0.01);

  const auto switches = stored(storedKeys::reviewSwitchCount);
  page.click("Focus");
  EXPECT_NE(stored(storedKeys::reviewSwitchCount), switches) << "the active pod runs the same steps";
  page.click("Standard");
  page.advance(0.1);
  EXPECT_TRUE(page.shows("Surface")) << "on its way out";
  page.advance(settled);
  EXPECT_FALSE(page.shows("Surface"));
  EXPECT_EQ(page.size().height, height);
}

TEST_F(MenuRootViewTest, WhileTheRevealKeyIsHeldNoPodIsActiveAndTheCardStays) {
  state().revealMonitor().modifier = RevealModifier::command;
  state().setMode(VeilMode::cleanDesktop);
  auto page = menu();
  page.advance(settled);
  EXPECT_TRUE(page.shows("Reduce clutter, keep context"));
  EXPECT_EQ(page.host().tooltip(page.text("Hold ⌘ Command to Reveal").center()), "Super");
  desktop->eventMonitors().pressModifier(platform::modifier::command);
  desktop->advance(settled);
  EXPECT_TRUE(page.shows("All contents temporarily visible"));
  EXPECT_EQ(activePodTitle(page), "");
  EXPECT_TRUE(page.shows("Surface"));
}

TEST_F(MenuRootViewTest, TheLanguageMenuListsAllLanguagesAndChecksTheChosenOne) {
  auto page = menu();
  page.advance(settled);
  const auto entries = [&] {
    page.click(flag);
    return page.openedMenu();
  };
  const auto checked = [](const std::vector<MenuEntry>& entries) {
    std::vector<std::string> titles;
    for (const auto& entry : entries)
      if (entry.isChecked) titles.push_back(entry.title);
    return titles;
  };
  using Titles = std::vector<std::string>;
  auto all = entries();
  ASSERT_EQ(all.size(), 2 + supportedLanguages.size());
  EXPECT_TRUE(all[1].isDivider);
  EXPECT_EQ(all.back().title, "🇹🇼  繁體中文");
  EXPECT_EQ(checked(all), Titles{"System"}) << "not English, too";

  all[7].action();
  page.advance(0);
  EXPECT_EQ(LanguageManager::shared().selection(), "de");
  EXPECT_TRUE(page.shows("🇩🇪"));
  EXPECT_TRUE(page.shows("Beenden"));
  all = entries();
  EXPECT_EQ(checked(all), Titles{"🇩🇪  Deutsch"});

  LanguageManager::shared().select("xx");
  page.advance(0);
  EXPECT_TRUE(page.shows("🇬🇧"));
  all = entries();
  EXPECT_EQ(checked(all), Titles{"🇬🇧  English"}) << "stands in for a language that is not in the table";
  all[0].action();
  EXPECT_EQ(LanguageManager::shared().selection(), "system");
}

TEST_F(MenuRootViewTest, TheWholeQuitRowIsLitByTheDesktopsAccentAndQuits) {
  Environment orange;
  orange.accent = fixed({1, 0.5, 0, 1});
  auto page = menu(orange);
  page.advance(settled);
  const platform::Point row{180, page.text("Quit").center().y};
  page.hover(row);
  EXPECT_TRUE(hasSize(page.fillsOf(orange.accent.light).at(0), 336, 24));
  EXPECT_TRUE(hasColor(page.text("Quit"), white.light));
  page.hover(page.text("Hushpane").center());
  EXPECT_TRUE(page.fillsOf(orange.accent.light).empty());
  page.click(row);
  EXPECT_TRUE(desktop->application().isTerminated());
}

TEST_F(MenuRootViewTest, FromRightToLeftThePageIsMirroredButNotItsKeys) {
  LanguageManager::shared().select("ar");
  auto page = menu();
  page.advance(settled);
  EXPECT_NEAR(page.text("Hushpane").frame.right(), 360 - 12, 0.51);
  EXPECT_NEAR(page.text(quitKeys).frame.x, 24, 0.51);
  EXPECT_TRUE(page.shows("اضغط مطولًا على \u2068⌥ Option\u2069 للإظهار"));
}

}  // namespace
}  // namespace hushpane::tests

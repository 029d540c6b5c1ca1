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
  int settingsOpened = 0;

  void SetUp() override {
    PageTest::SetUp();
    launch();
  }

  Page menu(const Environment& environment = light) {
    return show(LocalizedRoot{[this] {
                  return MenuRootView{state(), PreferencesStore::shared(), [this] { ++settingsOpened; }};
                }},
                environment);
  }
  static constexpr platform::Point flag{302, 24};
  static Shown activePod(const Page& page) {
    const auto marks = page.all(
        [](const Shown& shown) { return shown.as<FilledPath>() && hasSize(shown, 4, 4) && shown.opacity > 0.99; });
    return marks.size() == 1 ? marks.front() : Shown{};
  }
  // The pod with the mark of the mode in force; empty when none has it.
  static std::string activePodTitle(const Page& page) {
    const auto mark = activePod(page);
    for (const std::string title : {"Standard", "Ambience", "Focus"}) {
      const auto pod = page.text(title).frame;
      if (mark.frame.x > pod.x && mark.frame.x < pod.x + 105 && mark.frame.width > 0) return title;
    }
    return "";
  }
  void holdReveal() {
    desktop->eventMonitors().pressModifier(platform::modifier::option);
    desktop->advance(settled);
  }
};

TEST_F(MenuRootViewTest, ThePageIs360WideAndItsRowsStandWhereTheyBelong) {
  auto page = menu();
  page.advance(settled);
  EXPECT_EQ(page.words(), (std::vector<std::string>{"Hushpane", "🇬🇧", "Standard", "Ambience", "Focus",
                                                    "Desktop as usual", "Hold ⌥ Option to Reveal", "Quit", quitKeys}));
  EXPECT_EQ(page.size().width, 360);
  EXPECT_EQ(page.text("Hushpane").frame.x, 12);
  EXPECT_NEAR(page.text("Hushpane").center().y, 24, 0.51);
  const auto dividers = page.fillsOf(336, 1);
  ASSERT_EQ(dividers.size(), 2u);
  EXPECT_EQ(dividers[0].frame.y, 12 + 24 + 12);

  const double podWidth = (336 - 2 * 10) / 3.0;
  const auto pods = page.all([](const Shown& shown) { return shown.as<FilledPath>() && shown.frame.height > 40; });
  ASSERT_EQ(pods.size(), 3u);
  for (std::size_t index = 0; index < pods.size(); ++index) {
    EXPECT_NEAR(pods[index].frame.x, 12 + static_cast<double>(index) * (podWidth + 10), 0.51);
    EXPECT_NEAR(pods[index].frame.width, podWidth, 1);
    EXPECT_EQ(pods[index].frame.y, 49 + 12 + 2);
  }
  const double description = pods[0].frame.bottom() + 2 + 6;
  const auto reminder = page.text("Hold ⌥ Option to Reveal");
  EXPECT_EQ(page.text("Desktop as usual").frame.x, 16);
  EXPECT_NEAR(page.text("Desktop as usual").center().y, description + 7, 0.51);
  EXPECT_NEAR(reminder.frame.y, description + 14 + 6, 0.51) << "without a card, directly after the description";
  EXPECT_TRUE(hasColor(reminder, secondary.light));
  EXPECT_NEAR(dividers[1].frame.y, reminder.frame.bottom() + 12, 0.51);
  EXPECT_NEAR(page.size().height, dividers[1].frame.bottom() + 12 + 24 + 12, 0.01);
  EXPECT_EQ(page.text("Quit").frame.x, 24);
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
  EXPECT_EQ(stored(storedKeys::lastUserMode), platform::Value("focus"));
  EXPECT_TRUE(page.shows("Only the active app")) << "at once";
  EXPECT_EQ(page.text("Only the active app").opacity, 1);
  page.advance(0.1);
  const auto coming = page.text("Surface");
  EXPECT_GT(coming.opacity, 0);
  EXPECT_LT(coming.opacity, 1);
  page.advance(settled);
  EXPECT_EQ(activePodTitle(page), "Focus");
  const auto card = page.fillsOf(336, 46).at(0).frame;
  EXPECT_NEAR(card.y, page.text("Only the active app").center().y + 7 + 6, 0.51);
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
  state().setMode(VeilMode::cleanDesktop);
  auto page = menu();
  page.advance(settled);
  EXPECT_TRUE(page.shows("Reduce clutter, keep context"));
  holdReveal();
  EXPECT_TRUE(page.shows("All contents temporarily visible"));
  EXPECT_EQ(activePodTitle(page), "");
  EXPECT_TRUE(page.shows("Surface"));
}

TEST_F(MenuRootViewTest, TheReminderNamesTheRevealModifier) {
  state().revealMonitor().modifier = RevealModifier::command;
  auto page = menu();
  page.advance(settled);
  EXPECT_TRUE(page.shows("Hold ⌘ Command to Reveal"));
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

TEST_F(MenuRootViewTest, TheGearOpensTheSettings) {
  auto page = menu();
  page.advance(settled);
  const platform::Point gear{360 - 12 - 12, 24};
  EXPECT_EQ(page.host().tooltip(gear), "Settings");
  EXPECT_EQ(page.host().tooltip(flag), "Language");
  page.click(gear);
  EXPECT_EQ(settingsOpened, 1);
}

TEST_F(MenuRootViewTest, TheWholeQuitRowIsLitByTheDesktopsAccentAndQuits) {
  Environment orange = light;
  orange.accent = fixed({1, 0.5, 0, 1});
  auto page = menu(orange);
  page.advance(settled);
  const platform::Point row{180, page.text("Quit").center().y};
  EXPECT_TRUE(hasColor(page.text("Quit"), primary.light));
  page.hover(row);
  EXPECT_TRUE(hasSize(page.fillsOf(orange.accent.light).at(0), 336, 24));
  EXPECT_TRUE(hasColor(page.text("Quit"), white.light));
  page.hover(page.text("Hushpane").center());
  EXPECT_TRUE(page.fillsOf(orange.accent.light).empty());
  page.click(row);
  EXPECT_TRUE(desktop->application().isTerminated());
}

TEST_F(MenuRootViewTest, ThePageComesDownOnceAsItAppears) {
  auto page = show(MenuRootView{state(), PreferencesStore::shared(), [] {}});
  EXPECT_FALSE(page.shows("Quit"));
  page.advance(0.09);
  const double way = page.text("Quit").frame.y;
  EXPECT_GT(page.text("Quit").opacity, 0.5);
  page.advance(0.1);
  EXPECT_EQ(page.text("Quit").opacity, 1);
  EXPECT_GT(page.text("Quit").frame.y, way);
  EXPECT_LT(page.text("Quit").frame.y, way + 3);
  EXPECT_FALSE(page.isMoving());
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

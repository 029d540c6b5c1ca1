#include "ui/panel/panel_root.h"

#include "localization/language_manager.h"
#include "state/app_router.h"
#include "support/page.h"

namespace hushpane::tests {
namespace {

using namespace declarative;

constexpr double settled = 2;  // seconds after which nothing moves any more

class PanelRootTest : public PageTest {
 protected:
  void SetUp() override {
    store(storedKeys::hasSeenWelcome, true);
    PageTest::SetUp();
    launch();
  }

  AppRouter& router() { return AppRouter::shared(); }
  Page open() { return show(PanelRoot{}); }
  static bool isOnMenu(const Page& page) { return page.shows("Quit") && !page.shows("GENERAL"); }
  static bool isOnSettings(const Page& page) { return page.shows("GENERAL") && !page.shows("Quit"); }
};

TEST_F(PanelRootTest, TheWelcomePageGoesBeforeTheSettingsAndThoseBeforeTheMenu) {
  auto page = open();
  page.advance(settled);
  EXPECT_TRUE(isOnMenu(page));
  EXPECT_EQ(page.size().width, 360);
  page.click({336, 24});
  EXPECT_TRUE(router().showingSettings());
  page.advance(settled);
  EXPECT_TRUE(isOnSettings(page));
  router().setShowingWelcome(true);
  page.advance(0.19);
  EXPECT_NEAR(page.text("Get started").opacity, 0.5, 0.1) << "half of 0.38 seconds";
  EXPECT_NEAR(page.text("Get started").center().x, page.size().width / 2, 0.51) << "where it stays";
  page.advance(settled);
  EXPECT_FALSE(page.shows("GENERAL"));
  const double place = page.text("Get started").center().x;
  page.click("Get started");
  page.advance(0.19);
  EXPECT_NEAR(page.text("Get started").center().x, place - 9, 2) << "towards the leading edge";
  EXPECT_NEAR(page.text("Get started").opacity, 0.5, 0.1);
  page.advance(settled);
  EXPECT_TRUE(isOnSettings(page));
  page.click({23, 23});
  page.advance(settled);
  EXPECT_TRUE(isOnMenu(page));
}

// Both pages fade and move by 28 points: the settings come from the trailing edge, the menu goes to the leading one.
TEST_F(PanelRootTest, SettingsAndMenuPassEachOtherInTheDirectionOfReading) {
  for (const auto& [language, direction] : {std::pair("en", 1), {"ar", -1}}) {
    LanguageManager::shared().select(language);
    auto page = open();
    page.advance(settled);
    const auto centerOf = [&](double width, double height) { return page.fillsOf(width, height).at(0).center().x; };
    const double gone = page.text("Hushpane").center().x;
    router().openSettings();
    page.advance(0.1);
    EXPECT_GT((gone - page.text("Hushpane").center().x) * direction, 1) << language;
    EXPECT_LT(page.text("Hushpane").opacity, 1);
    const double way = centerOf(22, 22);
    page.advance(settled);
    EXPECT_GT((way - centerOf(22, 22)) * direction, 1) << language;
    EXPECT_FALSE(page.shows("Hushpane"));
    router().setShowingSettings(false);
    page.advance(settled);
  }
}

TEST_F(PanelRootTest, ThePanelOpensOnTheMenuAgainAndItsEntranceIsReplayed) {
  for (int opening = 0; opening < 3; ++opening) {
    auto page = open();
    EXPECT_TRUE(page.words().empty()) << "opening " << opening;
    page.advance(0.04);
    ASSERT_TRUE(isOnMenu(page));
    EXPECT_LT(page.text("Hushpane").opacity, 0.8);
    const double small = page.text("Hushpane").frame.x;
    page.advance(settled);
    EXPECT_EQ(page.text("Hushpane").opacity, 1);
    EXPECT_LT(page.text("Hushpane").frame.x, small - 1) << "grown from the middle of its upper edge";
    router().openSettings();
    page.advance(settled);
    page.host().leave();
    EXPECT_FALSE(router().showingSettings());
  }
}

TEST_F(PanelRootTest, AReviewAskedForIsForgottenHalfASecondAfterThePanelClosed) {
  store(storedKeys::reviewSwitchCount, 1000);
  store(storedKeys::reviewSessionCount, 1000);
  store(storedKeys::firstUseDate, platform::Date{});
  relaunch();
  {
    auto page = open();
    page.advance(settled);
    page.click("Focus");
    ASSERT_TRUE(state().pendingReviewRequest());
    page.advance(settled);
    EXPECT_TRUE(state().pendingReviewRequest()) << "as long as the panel is open";
    page.host().leave();
  }
  desktop->advance(0.49);
  EXPECT_TRUE(state().pendingReviewRequest());
  desktop->advance(0.02);
  EXPECT_FALSE(state().pendingReviewRequest());
}

}  // namespace
}  // namespace hushpane::tests

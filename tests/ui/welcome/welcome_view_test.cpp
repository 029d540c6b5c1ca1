#include "ui/welcome/welcome_view.h"

#include "localization/language_manager.h"
#include "support/page.h"
#include "ui/global_accent.h"
#include "ui/localized_root.h"

namespace hushpane::tests {
namespace {

using namespace declarative;

class WelcomeViewTest : public PageTest {
 protected:
  Page welcome() {
    return show(LocalizedRoot{[] { return WelcomeView{[] {}, globalAccent}; }});
  }
  static double blurOf(const Page& page) { return page.fillsOf({1, 1, 1, 1}).at(0).blurRadius; }
};

TEST_F(WelcomeViewTest, InEveryLanguageThePageIs300WideAndItsTextsWrapInTheMiddle) {
  for (const std::string code : {"en", "de", "fr", "ja", "ar", "he"}) {
    SCOPED_TRACE(code);
    LanguageManager::shared().select(code);
    const auto page = welcome();
    EXPECT_EQ(page.size().width, 300);
    EXPECT_EQ(page.texts().size(), 4u);
    for (const auto& text : page.texts()) {
      EXPECT_GE(text.frame.x, 32) << text.text();
      EXPECT_LE(text.frame.right(), 268) << text.text();
      EXPECT_NEAR(text.center().x, 150, 0.51) << text.text();
      EXPECT_FALSE(text.as<DrawnText>()->layout->isTruncated()) << text.text();
    }
    EXPECT_EQ(page.fillsOf(74, 74).back().frame, (platform::Rect{100 + 13 + 10, 36 + 13 + 10, 74, 74}))
        << "the logo looks the same to everybody";
  }
}

TEST_F(WelcomeViewTest, TheLogoBreathesFrom600MillisecondsOn) {
  auto page = welcome();
  page.advance(0.59);
  EXPECT_EQ(blurOf(page), 0.3);
  EXPECT_FALSE(page.isMoving());
  page.advance(0.01 + 2.4);
  EXPECT_NEAR(blurOf(page), 2.2, 0.01);
  page.advance(2.4);
  EXPECT_NEAR(blurOf(page), 0.3, 0.01) << "and out again";
  page.advance(2.4 * 101);
  EXPECT_NEAR(blurOf(page), 2.2, 0.02) << "for ever";
  EXPECT_TRUE(page.isMoving());
}

TEST_F(WelcomeViewTest, APageThatIsGoneBreathesNoMore) {
  { const auto page = welcome(); }
  desktop->advance(1);
  EXPECT_FALSE(desktop->frameClock().isRunning());
}

}  // namespace
}  // namespace hushpane::tests

#include "ui/welcome/welcome_view.h"

#include "localization/language_manager.h"
#include "support/page.h"
#include "support/temporary_folder.h"
#include "ui/global_accent.h"
#include "ui/localized_root.h"

namespace hushpane::tests {
namespace {

using namespace declarative;

class WelcomeViewTest : public PageTest {
 protected:
  int continued = 0;

  Page welcome(const Environment& environment = light) {
    return show(LocalizedRoot{[this] { return WelcomeView{[this] { ++continued; }, globalAccent}; }}, environment);
  }
  static double blurOf(const Page& page) { return page.fillsOf({1, 1, 1, 1}).at(0).blurRadius; }
};

TEST_F(WelcomeViewTest, ThePageIs300WideWithAllCentred) {
  const auto page = welcome();
  EXPECT_EQ(page.size().width, 300);
  EXPECT_EQ(page.words(), (std::vector<std::string>{"Hushpane", "The calm between windows.",
                                                    "Quieter screens, sharper focus.", "Get started"}));
  for (const auto& text : page.texts()) EXPECT_NEAR(text.center().x, 150, 0.51) << text.text();
  const auto button = page.fillsOf(globalAccent.light).at(0);
  EXPECT_TRUE(hasSize(button, 134, 28));
  EXPECT_NEAR(page.size().height - button.frame.bottom(), 30, 0.51);
  const auto front = page.fillsOf(74, 74).back();
  EXPECT_EQ(front.frame, (platform::Rect{100 + 13 + 10, 36 + 13 + 10, 74, 74}));
}

TEST_F(WelcomeViewTest, InEveryLanguageThePageKeepsItsWidthAndTextsWrap) {
  for (const std::string code : {"en", "de", "fr", "ja", "ar", "he"}) {
    LanguageManager::shared().select(code);
    const auto page = welcome();
    EXPECT_EQ(page.size().width, 300) << code;
    for (const auto& text : page.texts()) {
      EXPECT_GE(text.frame.x, 32) << code << ": " << text.text();
      EXPECT_LE(text.frame.right(), 268) << code << ": " << text.text();
      EXPECT_NEAR(text.center().x, 150, 0.51) << code << ": " << text.text();
      EXPECT_FALSE(text.as<DrawnText>()->layout->isTruncated()) << code << ": " << text.text();
    }
  }
}

TEST_F(WelcomeViewTest, ALongTaglineWrapsWithin240Points) {
  std::filesystem::create_directories(storage.folder() / "resources/en.lproj");
  writeFile(storage.folder() / "resources/en.lproj/Localizable.strings",
            "\"Quieter screens, sharper focus.\" = \"Ruhigere Bildschirme, ein klarerer Blick und viel mehr Zeit.\";");
  desktop.reset();
  desktop = std::make_unique<sim::SimPlatform>(storage, screens, storage.folder() / "resources");
  const auto page = welcome();
  const auto line = page.text("Ruhigere Bildschirme, ein klarerer Blick und viel mehr Zeit.");
  EXPECT_EQ(page.size().width, 300);
  EXPECT_EQ(line.as<DrawnText>()->layout->lineCount(), 2);
  EXPECT_LE(line.frame.width, 240);
  EXPECT_NEAR(line.center().x, 150, 0.51);
}

TEST_F(WelcomeViewTest, TheLogoBreathesFrom600MillisecondsOn) {
  auto page = welcome();
  page.advance(0.59);
  EXPECT_EQ(blurOf(page), 0.3);
  EXPECT_FALSE(page.isMoving());
  page.advance(0.01 + 1.2);
  EXPECT_NEAR(blurOf(page), 1.25, 0.05) << "half of the way in";
  page.advance(1.2);
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

TEST_F(WelcomeViewTest, TheButtonContinues) {
  auto page = welcome(dark);
  page.click("Get started");
  EXPECT_EQ(continued, 1);
}

TEST_F(WelcomeViewTest, AnotherLanguageShowsAtOnce) {
  auto page = welcome();
  LanguageManager::shared().select("de");
  page.advance(0);
  EXPECT_FALSE(page.shows("Get started"));
  EXPECT_EQ(page.texts().size(), 4u);
  LanguageManager::shared().select("en");
  page.advance(0);
  EXPECT_TRUE(page.shows("Get started"));
}

}  // namespace
}  // namespace hushpane::tests

#include "localization/language_manager.h"

#include <gtest/gtest.h>

#include <memory>

#include "desktops/sim/sim_platform.h"
#include "support/temporary_folder.h"

namespace hushpane::tests {
namespace {

// The program's languages on a simulated desktop, with resources of the test's own.
class LanguageManagerTest : public testing::Test {
 protected:
  sim::Storage storage;
  TemporaryFolder resources;
  std::unique_ptr<sim::SimPlatform> desktop;

  void SetUp() override { launch({"en"}); }

  // A new process, of a user who prefers these languages.
  void launch(std::vector<std::string> preferred) {
    desktop.reset();
    desktop =
        std::make_unique<sim::SimPlatform>(storage, std::vector{sim::SimPlatform::defaultScreen}, resources.path());
    desktop->locale().setPreferredLanguages(std::move(preferred));
  }
  void launchWithSelection(std::vector<std::string> preferred, platform::Value selection) {
    storage.standardDefaults.insert_or_assign("hushpane.language", std::move(selection));
    launch(std::move(preferred));
  }

  void writeStrings(const std::string& code, const std::string& text) {
    std::filesystem::create_directories(resources / (code + ".lproj"));
    writeFile(resources / (code + ".lproj/Localizable.strings"), text);
  }
  // Texts that tell their language.
  void writeTexts(const std::string& code) { writeStrings(code, "\"Mode\" = \"Mode in " + code + "\";"); }

  LanguageManager& languages() { return LanguageManager::shared(); }
  std::string text() { return languages().localizedString("Mode"); }
  std::string resolved(std::vector<std::string> preferred) {
    desktop->locale().setPreferredLanguages(std::move(preferred));
    return languages().resolve("system");
  }
  std::string published() { return WidgetBridge::shared().sharedString("hushpane.language").value_or("absent"); }
};

TEST_F(LanguageManagerTest, TheSystemsChoiceIsTheFirstPreferredLanguageThatIsSupported) {
  EXPECT_EQ(resolved({"fr-CA", "en-US"}), "fr");
  EXPECT_EQ(resolved({"pt-BR", "en"}), "pt-BR");
  EXPECT_EQ(resolved({"es-419"}), "es-419");
  EXPECT_EQ(resolved({"es-MX"}), "es");
  EXPECT_EQ(resolved({"zh-Hans-CN"}), "en") << "its prefix zh is no supported code";
  EXPECT_EQ(resolved({"zh-Hans-CN", "zh-hant", "xx", "pt", "DE", "ja-JP", "de"}), "ja");
  EXPECT_EQ(resolved({}), "en");
  EXPECT_EQ(resolved({"", "-", "-de"}), "en");
  EXPECT_EQ(languages().resolve("xx-YY"), "xx-YY") << "a choice is taken as it is";
}

TEST_F(LanguageManagerTest, TheSystemIsFollowedUntilAChoiceWhichTakesEffectAtOnceAndLasts) {
  writeTexts("de");
  writeTexts("ja");
  launch({"de-AT", "en-US"});
  EXPECT_EQ(text(), "Mode in de");
  EXPECT_EQ(published(), "de");
  EXPECT_TRUE(storage.standardDefaults.empty());
  EXPECT_EQ(desktop->widgetCenter().reloadCount(), 0u);

  const platform::Dictionary chosen{{"hushpane.language", "ja"}, {"AppleLanguages", platform::Array{"ja"}}};
  languages().select("ja");
  EXPECT_EQ(text(), "Mode in ja");
  EXPECT_EQ(published(), "ja");
  EXPECT_EQ(desktop->widgetCenter().reloadCount(), 1u);
  EXPECT_EQ(std::exchange(storage.standardDefaults, {}), chosen);
  const auto token = languages().observe([] { ADD_FAILURE() << "nothing changes"; });
  languages().select("ja");
  EXPECT_EQ(desktop->widgetCenter().reloadCount(), 1u);
  EXPECT_TRUE(storage.standardDefaults.empty());

  storage.standardDefaults = chosen;
  launch({"de"});
  EXPECT_EQ(text(), "Mode in ja");
  languages().select("system");
  EXPECT_EQ(languages().resolvedCode(), "de");
  EXPECT_EQ(text(), "Mode in de");
  EXPECT_EQ(published(), "de");
  EXPECT_EQ(storage.standardDefaults, (platform::Dictionary{{"hushpane.language", "system"}}));
}

TEST_F(LanguageManagerTest, ObserversSeeALanguageAndItsTextsTogether) {
  writeTexts("en");
  writeTexts("ja");
  launch({"en"});
  std::vector<std::string> seen;
  const auto token = languages().observe([&] {
    seen.push_back(languages().selection() + ": " + languages().resolvedCode() + ", " + languages().shownCode() + ", " +
                   text());
  });
  languages().select("ja");
  EXPECT_EQ(seen, (std::vector<std::string>{"system: en, en, Mode in en", "ja: en, en, Mode in en",
                                            "ja: ja, ja, Mode in ja"}));
}

TEST_F(LanguageManagerTest, AnObserverMayChooseAnotherLanguage) {
  writeTexts("de");
  writeTexts("ja");
  for (const int which : {0, 1, 2}) {
    storage.standardDefaults.clear();
    launch({"en"});
    int announcements = 0;
    const auto token = languages().observe([&] {
      if (announcements++ == which) languages().select("de");
    });
    languages().select("ja");
    const auto chosen = languages().selection();
    EXPECT_EQ(languages().resolvedCode(), chosen) << which;
    EXPECT_EQ(text(), "Mode in " + chosen) << which;
    EXPECT_EQ(published(), chosen) << which;
    EXPECT_EQ(storage.standardDefaults.at("hushpane.language"), chosen) << which;
  }
}

TEST_F(LanguageManagerTest, PagesAreReadInTheDirectionOfTheTextsShown) {
  writeTexts("he");
  writeStrings("ar", "\"Mode\" = ");
  launch({"he-IL"});
  EXPECT_EQ(languages().shownCode(), "he");
  for (const auto* code : {"fr", "ar"}) {
    languages().select(code);
    EXPECT_EQ(languages().resolvedCode(), code);
    EXPECT_EQ(languages().shownCode(), "he") << "texts in " << code << " are missing or broken";
    EXPECT_EQ(text(), "Mode in he");
  }
  launchWithSelection({"fr"}, "xx");
  EXPECT_EQ(languages().shownCode(), "en") << "the language of the keys";
}

TEST_F(LanguageManagerTest, AnUnknownChoiceStaysInForceAndTheTextsAreTheSystems) {
  writeTexts("de");
  writeTexts("en");
  launchWithSelection({"sv", "de-AT", "en"}, "xx");
  EXPECT_EQ(languages().resolvedCode(), "xx");
  EXPECT_EQ(languages().localizedBundle(), nullptr);
  EXPECT_EQ(text(), "Mode in de");
  EXPECT_EQ(published(), "xx");
  launch({"sv"});
  EXPECT_EQ(text(), "Mode in en");
  for (const auto* outside : {"../de", "", ".", "de.lproj/../de"}) {
    launchWithSelection({"sv"}, outside);
    EXPECT_EQ(languages().resolvedCode(), outside);
    EXPECT_EQ(languages().localizedBundle(), nullptr) << outside;
  }
  launchWithSelection({"de"}, 3);
  EXPECT_EQ(languages().selection(), "system") << "no text";
}

TEST_F(LanguageManagerTest, ATextThatALanguageLacksIsTheSystemsOrTheKey) {
  EXPECT_EQ(text(), "Mode") << "no language has a folder";
  writeTexts("de");
  writeStrings("ja", R"("Focus" = "集中"; "%@ of %lld" = "%2$lld: %1$@";)");
  launchWithSelection({"de"}, "ja");
  EXPECT_EQ(languages().localizedString("Focus"), "集中");
  EXPECT_EQ(text(), "Mode in de");
  EXPECT_EQ(languages().localizedString("Hold %@ to Reveal"), "Hold %@ to Reveal");
  EXPECT_EQ(languages().localizedString("Hold %@ to Reveal", {"Alt"}), "Hold Alt to Reveal");
  EXPECT_EQ(languages().localizedString("%@ of %lld", {"Display", 2}), "2: Display");
}

}  // namespace
}  // namespace hushpane::tests

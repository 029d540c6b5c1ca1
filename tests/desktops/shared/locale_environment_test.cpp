#include "desktops/shared/locale_environment.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

namespace hushpane::desktops::tests {
namespace {

using Languages = std::vector<std::string>;

// Sets the locale of the environment; all as before at the end of the test.
class LocaleEnvironmentTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : variables)
      if (const char* value = std::getenv(name)) before_[name] = value;
    clear();
  }
  void TearDown() override {
    clear();
    for (const auto& [name, value] : before_) setenv(name.c_str(), value.c_str(), 1);
  }

  Languages languages(const std::map<std::string, std::string>& values) {
    clear();
    for (const auto& [name, value] : values) setenv(name.c_str(), value.c_str(), 1);
    return LocaleEnvironment().preferredLanguages();
  }

 private:
  static constexpr std::array variables{"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};
  static void clear() {
    for (const char* name : variables) unsetenv(name);
  }
  std::map<std::string, std::string> before_;
};

TEST_F(LocaleEnvironmentTest, TheVariablesCountInTheirOrder) {
  EXPECT_EQ(languages({}), Languages{});
  EXPECT_EQ(languages({{"LANG", "de"}}), Languages{"de"});
  EXPECT_EQ(languages({{"LANG", "de"}, {"LC_MESSAGES", "fr"}}), Languages{"fr"});
  EXPECT_EQ(languages({{"LANG", "de"}, {"LC_MESSAGES", "fr"}, {"LC_ALL", "it"}}), Languages{"it"});
  EXPECT_EQ(languages({{"LANG", "de"}, {"LC_MESSAGES", "C"}}), Languages{});
  EXPECT_EQ(languages({{"LANG", "de"}, {"LC_MESSAGES", ""}, {"LC_ALL", ""}, {"LANGUAGE", ""}}), Languages{"de"});
  EXPECT_EQ(languages({{"LANG", "de"}, {"LANGUAGE", "ja:fr"}}), (Languages{"ja", "fr"}));
}

TEST_F(LocaleEnvironmentTest, TheLocaleWithoutTranslationsHasNoLanguages) {
  for (const auto* locale : {"C", "POSIX", "C.UTF-8"})
    EXPECT_EQ(languages({{"LANG", locale}, {"LANGUAGE", "fr"}}), Languages{}) << locale;
  EXPECT_EQ(languages({{"LANGUAGE", "fr"}}), Languages{});
  EXPECT_EQ(languages({{"LANG", "de"}, {"LANGUAGE", "fr:C:it"}}), Languages{"fr"}) << "nothing after it counts";
}

TEST_F(LocaleEnvironmentTest, LocaleNamesBecomeTags) {
  const std::vector<std::pair<std::string, Languages>> cases{
      {"de_DE.UTF-8", {"de-DE"}},
      {"de_AT.UTF-8@euro", {"de-AT"}},
      {"ca_ES@valencia", {"ca-ES"}},
      {"sr_RS@latin", {"sr-RS"}},
      {"EN_gb", {"en-GB"}},
      {"pt_BR", {"pt-BR"}},
      {"pt", {"pt-BR"}},
      {"pt_AO", {"pt-PT"}},
      {"es_ES", {"es-ES"}},
      {"es_MX", {"es-419"}},
      {"es-419", {"es-419"}},
      {"es", {"es"}},
      {"zh_CN", {"zh-Hans"}},
      {"zh_SG.GB2312", {"zh-Hans"}},
      {"zh", {"zh-Hans"}},
      {"zh_TW.Big5", {"zh-Hant"}},
      {"zh_HK", {"zh-Hant"}},
      {"zh-hant-MY", {"zh-Hant"}},
      {"nb_NO", {"nb-NO"}},
      {"no_NO", {"nb-NO"}},
      {"nn_NO", {"nn-NO", "nb"}},
      {"iw_IL", {"he-IL"}},
      {"in", {"id"}},
      {"mo", {"ro"}},
  };
  for (const auto& [name, expected] : cases) EXPECT_EQ(languages({{"LANG", name}}), expected) << name;
}

TEST_F(LocaleEnvironmentTest, NamesWithoutMeaningArePassedOver) {
  EXPECT_EQ(languages({{"LANG", "de"}, {"LANGUAGE", "::/etc/passwd:x:_:.:@:d e:de_:..:fr_FR_FRANC:\xFF\xFE:it:it:"}}),
            (Languages{"de", "it"}));
  std::string endless;
  for (int count = 0; count < 10'000; ++count)
    endless += {static_cast<char>('a' + count % 26), static_cast<char>('a' + count / 26 % 26), ':'};
  EXPECT_LE(languages({{"LANG", "de"}, {"LANGUAGE", endless}}).size(), 65u);
  EXPECT_EQ(languages({{"LANG", std::string(100'000, 'd')}}), Languages{});
}

}  // namespace
}  // namespace hushpane::desktops::tests

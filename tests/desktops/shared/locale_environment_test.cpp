#include "desktops/shared/locale_environment.h"

#include <gtest/gtest.h>

#include <list>

#include "support/environment.h"

namespace hushpane::desktops::tests {
namespace {

using Languages = std::vector<std::string>;

// In an environment with these variables, and no others of the locale.
Languages languages(const std::map<std::string, std::string>& values) {
  std::list<Environment> variables;
  for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
    const auto found = values.find(name);
    variables.emplace_back(name, found == values.end() ? nullptr : found->second.c_str());
  }
  return LocaleEnvironment().preferredLanguages();
}

TEST(LocaleEnvironmentTest, TheVariablesCountInTheirOrder) {
  EXPECT_EQ(languages({}), Languages{});
  EXPECT_EQ(languages({{"LANG", "de"}}), Languages{"de"});
  EXPECT_EQ(languages({{"LANG", "de"}, {"LC_MESSAGES", "fr"}}), Languages{"fr"});
  EXPECT_EQ(languages({{"LANG", "de"}, {"LC_MESSAGES", "fr"}, {"LC_ALL", "it"}}), Languages{"it"});
  EXPECT_EQ(languages({{"LANG", "de"}, {"LC_MESSAGES", "C"}}), Languages{});
  EXPECT_EQ(languages({{"LANG", "de"}, {"LC_MESSAGES", ""}, {"LC_ALL", ""}, {"LANGUAGE", ""}}), Languages{"de"});
  EXPECT_EQ(languages({{"LANG", "de"}, {"LANGUAGE", "ja:fr"}}), (Languages{"ja", "fr"}));
}

TEST(LocaleEnvironmentTest, TheLocaleWithoutTranslationsHasNoLanguages) {
  for (const auto* locale : {"C", "POSIX", "C.UTF-8"})
    EXPECT_EQ(languages({{"LANG", locale}, {"LANGUAGE", "fr"}}), Languages{}) << locale;
  EXPECT_EQ(languages({{"LANGUAGE", "fr"}}), Languages{});
  EXPECT_EQ(languages({{"LANG", "de"}, {"LANGUAGE", "fr:C:it"}}), Languages{"fr"}) << "nothing after it counts";
}

TEST(LocaleEnvironmentTest, LocaleNamesBecomeTags) {
  const std::map<std::string, std::vector<const char*>> namesOf{{"de-DE", {"de_DE.UTF-8"}},
                                                                {"de-AT", {"de_AT.UTF-8@euro"}},
                                                                {"ca-ES", {"ca_ES@valencia"}},
                                                                {"sr-RS", {"sr_RS@latin"}},
                                                                {"en-GB", {"EN_gb"}},
                                                                {"pt-BR", {"pt_BR", "pt"}},
                                                                {"pt-PT", {"pt_AO"}},
                                                                {"es-ES", {"es_ES"}},
                                                                {"es-419", {"es_MX", "es-419"}},
                                                                {"es", {"es"}},
                                                                {"zh-Hans", {"zh_CN", "zh_SG.GB2312", "zh"}},
                                                                {"zh-Hant", {"zh_TW.Big5", "zh_HK", "zh-hant-MY"}},
                                                                {"nb-NO", {"nb_NO", "no_NO"}},
                                                                {"he-IL", {"iw_IL"}},
                                                                {"id", {"in"}},
                                                                {"ro", {"mo"}}};
  for (const auto& [tag, names] : namesOf)
    for (const char* name : names) EXPECT_EQ(languages({{"LANG", name}}), Languages{tag}) << name;
  EXPECT_EQ(languages({{"LANG", "nn_NO"}}), (Languages{"nn-NO", "nb"}));
}

TEST(LocaleEnvironmentTest, NamesWithoutMeaningArePassedOver) {
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

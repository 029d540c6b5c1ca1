#include "localization/supported_language.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace hushpane::tests {
namespace {

// A flag is two regional indicators, each the four bytes F0 9F 87 A6 to BF.
bool isFlag(std::string_view text) {
  const auto isIndicator = [](std::string_view letter) {
    return letter.starts_with("\xF0\x9F\x87") && static_cast<unsigned char>(letter[3]) >= 0xA6;
  };
  return text.size() == 8 && isIndicator(text.substr(0, 4)) && isIndicator(text.substr(4));
}

TEST(SupportedLanguages, BeginWithEnglishGoOnByCodeAndShowAFlagAndANameOfTheirOwn) {
  EXPECT_EQ(supportedLanguages.front().code, "en");
  EXPECT_TRUE(std::is_sorted(supportedLanguages.begin() + 1, supportedLanguages.end(),
                             [](const auto& one, const auto& other) { return one.code < other.code; }));
  for (const auto& language : supportedLanguages) {
    EXPECT_EQ(std::ranges::count(supportedLanguages, language.endonym, &SupportedLanguage::endonym), 1)
        << language.code;
    EXPECT_TRUE(isFlag(language.flag) || (language.code == "es-419" && language.flag == "\U0001F30E")) << language.code;
  }
}

TEST(SupportedLanguages, AreReadInTheDirectionOfTheirScript) {
  std::vector<std::string_view> rightToLeft;
  for (const auto& language : supportedLanguages)
    if (isRightToLeft(language.code)) rightToLeft.push_back(language.code);
  EXPECT_EQ(rightToLeft, (std::vector<std::string_view>{"ar", "he"}));
  for (const auto* tag : {"ar-EG", "he-IL", "fa", "ur-PK", "ckb-IQ", "az-Arab", "uz-Arab-AF"})
    EXPECT_TRUE(isRightToLeft(tag)) << tag;
  for (const auto* tag : {"", "-", "--", "xx", "art", "arabic", "de-AR", "ar-Latn-EG", "ks-Deva", "system", "-ar"})
    EXPECT_FALSE(isRightToLeft(tag)) << tag;
}

}  // namespace
}  // namespace hushpane::tests

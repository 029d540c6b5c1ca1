#include "localization/localized_format.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace hushpane::tests {
namespace {

using Arguments = std::vector<FormatArgument>;

TEST(LocalizedFormat, PutsArgumentsIntoTheirPlaces) {
  const Arguments arguments{"Alt", 7};
  const std::vector<std::pair<std::string, std::string>> cases{
      {"Hold %@ to Reveal", "Hold Alt to Reveal"},
      {"%@  %d", "Alt  7"},
      {"%2$lld / %1$@", "7 / Alt"},
      {"%2$@ %@ %1$@ %ld", "7 Alt Alt 7"},
      {"%d %@", "Alt 7"},
      {"100 %% of %@", "100 % of Alt"},
      {"ل%@م", "لAltم"},
      {"", ""},
  };
  for (const auto& [format, expected] : cases) EXPECT_EQ(formatLocalized(format, arguments), expected) << format;
  EXPECT_EQ(formatLocalized("%lld", Arguments{std::numeric_limits<std::int64_t>::min()}), "-9223372036854775808");
  EXPECT_EQ(formatLocalized("%@%@", Arguments{"%2$@%@%%", "%"}), "%2$@%@%%%") << "arguments are no formats";
}

TEST(LocalizedFormat, ArgumentsAndPlacesNeedNotMatch) {
  const Arguments arguments{"a"};
  const std::vector<std::pair<std::string, std::string>> cases{
      {"no place", "no place"},
      {"%@ %@ %3$@.", "a  ."},
      {"%0$@%2$@%18446744073709551617$@%99999999999999999999999$d", ""},
      {"%s %n %p %x %f %*d %5d %.1f %1$s", "%s %n %p %x %f %*d %5d %.1f %1$s"},
      {"50 % off, 100%", "50 % off, 100%"},
      {"%1", "%1"},
      {"%1$", "%1$"},
      {"%$@", "%$@"},
      {"%ll", "%ll"},
      {"%%%@", "%a"},
      {"%%@", "%@"},
      {"%%%", "%%"},
  };
  for (const auto& [format, expected] : cases) EXPECT_EQ(formatLocalized(format, arguments), expected) << format;
}

TEST(LocalizedFormat, APlaceThatIsCutShortStays) {
  constexpr std::string_view place = "%1$lld";
  for (std::size_t size = 0; size < place.size(); ++size) {
    const std::vector<char> cut(place.begin(), place.begin() + size);  // nothing may be read beyond it
    EXPECT_EQ(formatLocalized({cut.data(), size}, Arguments{7}), place.substr(0, size));
  }
  EXPECT_EQ(formatLocalized(place, Arguments{7}), "7");
}

TEST(LocalizedFormat, StaysBoundedForAnyFormat) {
  std::mt19937 random(7);
  const Arguments arguments{std::string("text"), std::int64_t{-1}};
  for (int round = 0; round < 20'000; ++round) {
    std::string format;
    for (auto size = random() % 24; size > 0; --size) format += "%%%@dl12$ \xFF\0"[random() % 12];
    EXPECT_LE(formatLocalized(format, arguments).size(), 2 * format.size()) << format;
  }
  const std::string longText(10'000, 'x');
  EXPECT_EQ(formatLocalized(longText + "%@" + longText, Arguments{longText}), longText + longText + longText);
}

}  // namespace
}  // namespace hushpane::tests

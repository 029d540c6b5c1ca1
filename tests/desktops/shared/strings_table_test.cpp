#include "desktops/shared/strings_table.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <random>

#include "support/temporary_folder.h"

namespace hushpane::desktops::tests {
namespace {

using namespace std::string_literals;
using Strings = platform::LocalizedStrings;

const std::string sample =
    "/* Menu */\n\"Hold %@ to \\\"Reveal\\\"\" = \"Maintenir %@\\n\\\\ \\U00e9\\101\\t\";\n// Off\nbare_key = "
    "\"\u00E9\";\n"
    "\"alone\";\n\"k\" = \"first\";\n\"k\" = \"last\";\n";

const Strings sampleStrings{
    {"Hold %@ to \"Reveal\"", "Maintenir %@\n\\ \u00E9A\t"}, {"bare_key", "\u00E9"}, {"alone", "alone"}, {"k", "last"}};

// Of a text whose characters are all below U+0800.
std::string inUtf16(const std::string& text, bool highFirst) {
  std::string result = highFirst ? "\xFE\xFF" : "\xFF\xFE";
  for (std::size_t at = 0; at < text.size(); ++at) {
    unsigned unit = static_cast<unsigned char>(text[at]);
    if (unit >= 0xC0) unit = (unit & 0x1F) << 6 | (static_cast<unsigned char>(text[++at]) & 0x3F);
    const char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit);
    result += highFirst ? std::string{high, low} : std::string{low, high};
  }
  return result;
}

TEST(StringsTable, IsReadInEveryEncodingThatSuchFilesHave) {
  for (const auto& bytes : {sample, "\xEF\xBB\xBF" + sample, inUtf16(sample, true), inUtf16(sample, false)})
    EXPECT_EQ(parseStringsTable(bytes), sampleStrings) << bytes.substr(0, 3);
}

TEST(StringsTable, LeavesOutWhatIsNoText) {
  EXPECT_EQ(parseStringsTable("a = (b); c = \"d\"; e = {f = g;}; h = <00>; i = \"\\0\"; \"j\\0\" = k;"),
            (Strings{{"c", "d"}}));
}

TEST(StringsTable, GivesNoStringsWhenAnythingIsBroken) {
  for (const auto& bytes :
       {""s, "/* nothing */"s, "\"a\" = \"b\"; \"c\" = \"d\""s, "\"a\" = \"b\"; \"c\" \"d\";"s, "\"a\" = \"b\"; = ;"s,
        "\"a\" = \"b\"; \"c\" = \"d;\n\"e\" = \"f\";"s, "\"a\" = \"b\"; /* c"s, "\"a\" = \"\\Ud83d\";"s,
        "\"a\" = \"\xE9\";"s, inUtf16("\"a\" = \"b\";", true).substr(2), inUtf16("\"a\" = \"b\";", false) + "x",
        "k = " + std::string(100'000, '(') + ";", "k = " + std::string(100'000, '{'), std::string(100'000, '"') + "\""})
    EXPECT_EQ(parseStringsTable(bytes), Strings{}) << bytes.substr(0, 40);
}

TEST(StringsTable, HoldsLongTextsButNotEndlesslyMany) {
  const std::string text(10'000, 'x');
  EXPECT_EQ(parseStringsTable("\"" + text + "\" = \"" + text + "\";"), (Strings{{text, text}}));
  std::string many = "a=b;";
  for (int count = 0; count < 200'000; ++count) many += "k;";
  EXPECT_EQ(parseStringsTable(many), Strings{});
}

TEST(StringsTable, GivesNoStringsForAFileThatIsNone) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "folder");
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  writeFile(folder / "file", sample);
  for (const auto* name : {"missing", "folder", "pipe"}) EXPECT_EQ(readStringsTable(folder / name), Strings{}) << name;
  EXPECT_EQ(readStringsTable(folder / "file"), sampleStrings);
}

// What survives a mutation must be sound: written out again it reads the same.
TEST(StringsTable, GivesNothingOrSoundTextsForAnyMutation) {
  std::mt19937 random(5);
  int survivors = 0;
  for (int round = 0; round < 8'000; ++round) {
    std::string bytes = round % 2 ? sample : inUtf16(sample, round % 4 == 0);
    for (auto change = 1 + random() % 3; change > 0; --change) {
      const auto at = random() % bytes.size();
      if (random() % 2)
        bytes[at] = "\"\\;=/*\0\xFF{("[random() % 10];
      else
        bytes.erase(at, 1 + random() % 4);
    }
    const auto strings = parseStringsTable(bytes);
    if (strings.empty()) continue;
    ++survivors;
    std::string written;
    const auto quoted = [](const std::string& text) {
      std::string result = "\"";
      for (const char character : text)
        result += (character == '"' || character == '\\' ? "\\" : "") + std::string(1, character);
      return result + "\"";
    };
    for (const auto& [key, text] : strings) written += quoted(key) + "=" + quoted(text) + ";";
    EXPECT_EQ(parseStringsTable(written), strings) << bytes;
  }
  EXPECT_GT(survivors, 500);
}

}  // namespace
}  // namespace hushpane::desktops::tests

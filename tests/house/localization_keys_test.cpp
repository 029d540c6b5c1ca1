#include <glib.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <ranges>
#include <set>

#include "desktops/shared/strings_table.h"
#include "house/key_literals.h"
#include "house/same_as_english.h"
#include "localization/supported_language.h"
#include "support/temporary_folder.h"

namespace hushpane::tests {
namespace {

namespace fs = std::filesystem;

using Names = std::set<std::string>;
using Texts = platform::LocalizedStrings;

Names usedKeys() {
  Names keys;
  for (const auto& entry : fs::recursive_directory_iterator(fs::path(HUSHPANE_SOURCE_DIR) / "src")) {
    const auto extension = entry.path().extension();
    if (extension != ".h" && extension != ".cpp") continue;
    for (const auto& literal : literalsIn(contentsOf(entry.path())))
      if (literal.isKey) keys.insert(literal.text);
  }
  return keys;
}

struct Folder {
  std::string code;
  fs::path file;
  Texts texts;
};

// The folders of texts that the program comes with.
std::vector<Folder> folders() {
  std::vector<Folder> found;
  for (const auto& entry : fs::directory_iterator(fs::path(HUSHPANE_SOURCE_DIR) / "resources")) {
    if (entry.path().extension() != ".lproj") continue;
    const auto file = entry.path() / "Localizable.strings";
    found.push_back({entry.path().stem(), file, desktops::readStringsTable(file)});
  }
  return found;
}

Names keysOf(const Texts& texts) {
  const auto keys = texts | std::views::keys;
  return {keys.begin(), keys.end()};
}

Names without(const Names& names, const Names& others) {
  Names left;
  std::ranges::set_difference(names, others, std::inserter(left, left.end()));
  return left;
}

// What stands for an argument in a text: its number, and whether it takes a text or a whole number. Other per cent
// signs are entries of number 0.
std::multiset<std::pair<std::size_t, char>> placesOf(std::string_view text) {
  std::multiset<std::pair<std::size_t, char>> places;
  std::size_t taken = 0;
  for (auto sign = text.find('%'); sign != text.npos; sign = text.find('%')) {
    text.remove_prefix(sign + 1);
    const auto digits = std::min(text.find_first_not_of("0123456789"), text.size());
    const bool isNumbered = digits > 0 && text.substr(digits).starts_with('$');
    const auto number = isNumbered ? std::stoul(std::string(text.substr(0, digits))) : 0;
    if (isNumbered) text.remove_prefix(digits + 1);
    text.remove_prefix(std::min(text.find_first_not_of("hlqz"), text.size()));
    const char conversion = text.empty() ? '\0' : text.front();
    const char kind = conversion == 'i' || conversion == 'u' ? 'd' : conversion;
    const bool isPlace = kind == '@' || kind == 'd';
    places.emplace(!isPlace ? 0 : isNumbered ? number : ++taken, kind);
    if (!text.empty()) text.remove_prefix(1);
  }
  return places;
}

constexpr gunichar firstStrongIsolate = 0x2068, popIsolate = 0x2069;

// The other characters that turn the direction of what follows; an isolate alone cannot leak out of its text.
bool isDirectionControl(gunichar character) {
  return character == 0x200E || character == 0x200F || character == 0x061C ||
         (character >= 0x202A && character <= 0x202E) || character == 0x2066 || character == 0x2067;
}

// What is wrong with the characters of a text; empty when nothing is.
std::string faultOf(const std::string& text) {
  if (text.empty()) return "empty";
  if (!g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr)) return "no UTF-8";
  const std::unique_ptr<char, decltype(&g_free)> composed(
      g_utf8_normalize(text.data(), static_cast<gssize>(text.size()), G_NORMALIZE_NFC), g_free);
  if (text != composed.get()) return "not composed (NFC)";
  if (text.find_first_of("\"'") != text.npos || text.find("...") != text.npos)
    return "quotation marks or dots of a typewriter";
  int open = 0;
  for (const char* at = text.c_str(); *at; at = g_utf8_next_char(at)) {
    const auto character = g_utf8_get_char(at);
    if (g_unichar_iscntrl(character)) return "a control character";
    if (isDirectionControl(character)) return "a direction control that is no isolate";
    open += character == firstStrongIsolate ? 1 : character == popIsolate ? -1 : 0;
    if (open < 0 || open > 1) return "isolates that do not pair";
  }
  return open == 0 ? "" : "isolates that do not pair";
}

TEST(LocalizationKeysTest, LiteralsAreFoundAsCompilersReadThem) {
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {R"(f("A"_key, "B", x ? "C"_key : "D"_key);)", {"A", "C", "D"}},
      {R"(// "A"_key
          /* "B"_key " */ '"' + 1'000 + '\'' + "\"//\\"_key)",
       {R"(\"//\\)"}},
      {"\"one \" // and\n  \"two\"_key, \"three\" + \"four\"_key", {"one two", "four"}},
      {"R\"(a\"b\\)\"_key R\"x(c)\")x\"_key", {"a\"b\\c)\""}},
      {R"("A"_keys, "B"_k, operator""_key(const char*))", {""}},
      {"\"not ended", {}},
  };
  for (const auto& [source, keys] : cases) {
    std::vector<std::string> found;
    for (const auto& literal : literalsIn(source))
      if (literal.isKey) found.push_back(literal.text);
    EXPECT_EQ(found, keys) << source;
  }
}

TEST(LocalizationKeysTest, EveryFolderHoldsTheKeysThatPagesUseOnceAndNoOthers) {
  auto used = usedKeys();
  used.erase("");  // the operator itself
  EXPECT_GT(used.size(), 10u);
  const auto found = folders();
  EXPECT_EQ(found.size(), supportedLanguages.size());
  for (const auto& language : supportedLanguages)
    EXPECT_TRUE(std::ranges::count(found, language.code, &Folder::code)) << language.code << " has no folder";
  for (const auto& [code, file, texts] : found) {
    EXPECT_TRUE(supportedLanguage(code)) << code;
    ASSERT_FALSE(texts.empty()) << file << " cannot be read";
    EXPECT_EQ(without(used, keysOf(texts)), Names{}) << "lacking in " << file;
    EXPECT_EQ(without(keysOf(texts), used), Names{}) << "used by no page, but in " << file;
    EXPECT_EQ(literalsIn(contentsOf(file)).size(), 2 * texts.size()) << "a key occurs twice, or alone, in " << file;
  }
}

TEST(LocalizationKeysTest, OnlyListedTextsAreAsInEnglish) {
  std::set<std::pair<std::string, std::string>> same, listed;
  for (const auto& [code, file, texts] : folders())
    for (const auto& [key, text] : texts)
      if (code != "en" && text == key && !sameEverywhere.contains(key) && !keyNames.contains(key))
        same.emplace(code, text);
  for (const auto& [text, codes, reason] : sameAsEnglish)
    for (const auto code : codes) listed.emplace(code, text);
  const auto lacking = [](const auto& all, const auto& others) {
    std::string names;
    for (const auto& [code, text] : all)
      if (!others.contains({code, text})) names += code + ": " + text + "\n";
    return names;
  };
  EXPECT_EQ(lacking(same, listed), "") << "not translated";
  EXPECT_EQ(lacking(listed, same), "") << "listed, but translated";
}

TEST(LocalizationKeysTest, EveryTextIsSound) {
  for (const auto& [code, file, texts] : folders())
    for (const auto& [key, text] : texts) {
      EXPECT_EQ(faultOf(text), "") << code << ": " << key;
      EXPECT_EQ(placesOf(text), placesOf(key)) << code << ": " << key << " = " << text;
      EXPECT_TRUE(code != "en" || text == key) << text << ": the key is the English text " << key;
    }
}

}  // namespace
}  // namespace hushpane::tests

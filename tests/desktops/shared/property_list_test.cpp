#include "desktops/shared/property_list.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "desktops/shared/xml_property_list.h"

namespace hushpane::desktops::tests {
namespace {

using namespace std::string_literals;
using platform::Array;
using platform::Data;
using platform::Date;
using platform::Dictionary;
using platform::Value;

constexpr auto smallest = std::numeric_limits<std::int64_t>::min();
constexpr auto largest = std::numeric_limits<std::int64_t>::max();

Dictionary everything() {
  return {{"yes", true},
          {"no", false},
          {"smallest", smallest},
          {"largest", largest},
          {"third", 1.0 / 3},
          {"huge", 1e300},
          {"infinite", -std::numeric_limits<double>::infinity()},
          {"text", "a < b & \"c\" > d \xF0\x9F\x98\x80\r\n\tend "},
          {"", "a key may be empty"},
          {"data", Data{0, 255, 128, 7}},
          {"no data", Data{}},
          {"date", Date{1'700'000'000}},
          {"old date", Date{-62'135'596'800}},
          {"list", Array{1, "two", Array{}, Dictionary{{"k", false}}}},
          {"nested", Dictionary{{"k", Dictionary{}}}}};
}

std::string xml(const std::string& body) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict><key>k</key>" + body +
         "</dict></plist>";
}

// A property list in the binary form, put together from encoded objects; the first one is the root.
struct BinaryList {
  std::vector<std::string> objects;
  unsigned referenceSize = 1;

  static std::string number(std::uint64_t value, unsigned size) {
    std::string bytes;
    for (unsigned byte = size; byte > 0; --byte) bytes += static_cast<char>(value >> (8 * (byte - 1)));
    return bytes;
  }

  std::string bytes() const {
    constexpr unsigned offsetSize = 4;
    std::string result = "bplist00";
    std::string table;
    for (const auto& object : objects) {
      table += number(result.size(), offsetSize);
      result += object;
    }
    const auto tableAt = result.size();
    return result + table + std::string(6, '\0') + number(offsetSize, 1) + number(referenceSize, 1) +
           number(objects.size(), 8) + number(0, 8) + number(tableAt, 8);
  }
};

// An object with a short text in ASCII.
std::string asciiObject(const std::string& text) {
  return static_cast<char>(0x50 | text.size()) + text;
}

// A list whose root dictionary has the encoded objects under one-letter keys from "a" on.
BinaryList binaryDictionary(std::vector<std::string> values) {
  const auto count = values.size();
  std::string root(1, static_cast<char>(0xD0 | count));
  for (std::size_t index = 0; index < 2 * count; ++index) root += static_cast<char>(1 + index);
  BinaryList list{{root}};
  for (std::size_t index = 0; index < count; ++index)
    list.objects.push_back(asciiObject(std::string(1, static_cast<char>('a' + index))));
  for (auto& value : values) list.objects.push_back(std::move(value));
  return list;
}

// The values of the binary form.
BinaryList everyBinaryValue() {
  return binaryDictionary({"\x08", "\x09", "\x10\xFF", "\x11\xFF\xFE", "\x12\xFF\xFF\xFF\xFD",
                           "\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFC", "\x22\x3F\xC0\0\0"s, "\x23\xBF\xF8\0\0\0\0\0\0"s,
                           "\x33\x3F\xE0\0\0\0\0\0\0"s, "\x42\x01\xFF"s, "\x53ok!"s, "\x63\0\xE9\xD8\x3D\xDE\0"s,
                           "\xA0"s, "\xD0"s});
}

// What a list in any form holds under "k".
std::optional<Value> valueIn(const std::string& bytes) {
  const auto list = parsePropertyList(bytes);
  if (!list || !list->contains("k")) return std::nullopt;
  return list->at("k");
}

TEST(PropertyList, GivesBackEverythingThatItWroteAsXml) {
  EXPECT_EQ(parsePropertyList(writeXmlPropertyList(everything())), everything());
}

TEST(PropertyList, WritesWellFormedXmlForAnyContent) {
  std::mt19937 random(1);
  for (int round = 0; round < 300; ++round) {
    std::string text;
    for (int size = static_cast<int>(random() % 40); size > 0; --size) text += static_cast<char>(random());
    const auto list = parsePropertyList(writeXmlPropertyList({{text, text}, {"list", Array{text}}}));
    ASSERT_TRUE(list) << round;
    EXPECT_EQ(list->size(), text == "list" ? 1u : 2u);
  }
  const auto list = parsePropertyList(writeXmlPropertyList({{"k", "a\x01\xFF"s + "b\0c"s}}));
  EXPECT_EQ(list, (Dictionary{{"k", "a\uFFFD\uFFFDb\uFFFDc"}}));
}

TEST(PropertyList, LeavesOutWhatXmlCannotSay) {
  Value deep = Array{};
  for (int level = 0; level < 300; ++level) deep = Array{deep};
  const Dictionary list{{"far", Date{1e18}}, {"never", Date{std::nan("")}}, {"kept", Date{1.75}}};
  EXPECT_EQ(parsePropertyList(writeXmlPropertyList(list)), (Dictionary{{"kept", Date{1}}}));
  EXPECT_TRUE(parsePropertyList(writeXmlPropertyList({{"k", deep}})));
}

TEST(PropertyList, ReadsXmlThatOthersWrite) {
  const std::vector<std::pair<std::string, Value>> cases{
      {"<integer> -12 </integer>", -12},
      {"<integer>+7</integer>", 7},
      {"<integer>0x1F</integer>", 31},
      {"<integer>-9223372036854775808</integer>", smallest},
      {"<real>+1.5e3</real>", 1500.0},
      {"<real>\n2\n</real>", 2.0},
      {"<true></true>", true},
      {"<string/>", ""},
      {"<string>a<!-- comment --><![CDATA[<b>&]]>&#x41;&apos;</string>", "a<b>&A'"},
      {"<data>\n\tAQ\n\tID\n</data>", Data{1, 2, 3}},
      {"<data>AQ==</data>", Data{1}},
      {"<date>1969-12-31T23:59:59Z</date>", Date{-1}},
      {"<date>2024-02-29T00:00:00Z</date>", Date{1'709'164'800}},
      {"<array/>", Array{}},
      {"<string>first</string><key>k</key><string>last</string>", "last"},
  };
  for (const auto& [body, expected] : cases) EXPECT_EQ(valueIn(xml(body)), expected) << body;
  EXPECT_EQ(parsePropertyList("\xEF\xBB\xBF <!-- c --><!DOCTYPE plist [<!ELEMENT a ANY>]><dict/>\n"), Dictionary{});
}

TEST(PropertyList, TakesNothingFromBrokenXml) {
  const std::map<std::string, std::vector<const char*>> brokenTexts{
      {"integer", {"1x", "", "- 1", "--1"}},
      {"real", {"1,5", "", "+-1"}},
      {"date", {"yesterday", "2023-02-29T00:00:00Z", "2023-01-01T24:00:00Z"}},
      {"data", {"A", "!!!!", "=AAA", "A=AA"}},
      {"true", {"x"}},
      {"string", {"<b/>", "&undefined;", "\xFF"}},
      {"array", {"<key>k</key>"}},
  };
  for (const auto& [element, texts] : brokenTexts)
    for (const char* text : texts)
      EXPECT_EQ(parsePropertyList(xml("<" + element + ">" + text + "</" + element + ">")), std::nullopt) << text;
  for (const char* body : {"<integer/>", "<bogus/>", "<plist/>", "text", "<key>k</key>", "", "<key>j</key><true/>",
                           "<true/><true/>", "</dict>"})
    EXPECT_EQ(parsePropertyList(xml(body)), std::nullopt) << body;
  for (const char* whole : {"<plist/>", "<plist></plist>", "<plist><true/></plist>", "<plist><dict/><dict/></plist>",
                            "<dict/><dict/>", "<dict/>x", "<plist><dict/></plist><dict/>", "<?xml version=\"1.0\"?>"})
    EXPECT_EQ(parsePropertyList(whole), std::nullopt) << whole;
}

TEST(PropertyList, CountsWhatItCannotHoldAsAbsent) {
  EXPECT_EQ(parsePropertyList(xml("<integer>18446744073709551615</integer><key>j</key>"
                                  "<integer>-99999999999999999999999</integer><key>i</key><true/>")),
            (Dictionary{{"i", true}}));
  const auto binary =
      binaryDictionary({"\0"s, "\x80\x01"s, "\x14"s + BinaryList::number(0, 8) + BinaryList::number(~0ull, 8),
                        "\x14"s + BinaryList::number(~0ull, 8) + BinaryList::number(~0ull, 8)});
  EXPECT_EQ(parsePropertyList(binary.bytes()), (Dictionary{{"d", -1}}));
}

TEST(PropertyList, ReadsTheBinaryForm) {
  const Dictionary expected{{"a", false},
                            {"b", true},
                            {"c", 255},
                            {"d", 65534},
                            {"e", std::int64_t{4294967293}},
                            {"f", -4},
                            {"g", 1.5},
                            {"h", -1.5},
                            {"i", Date{978'307'200.5}},
                            {"j", Data{1, 255}},
                            {"k", "ok!"},
                            {"l", "\u00E9\U0001F600"},
                            {"m", Array{}},
                            {"n", Dictionary{}}};
  EXPECT_EQ(parsePropertyList(everyBinaryValue().bytes()), expected);
}

TEST(PropertyList, TakesNothingFromHostileBinaryLists) {
  const auto under = [](std::vector<std::string> objects) {  // the key of the root
    objects.insert(objects.begin(), {"\xD1\x01\x02"s, asciiObject("k")});
    return BinaryList{std::move(objects)};
  };
  std::map<std::string, BinaryList> lists{
      {"holds itself", {{"\xD1\x01\0"s, asciiObject("k")}}},
      {"arrays hold each other", under({"\xA1\x03"s, "\xA1\x02"s})},
      {"key is a number", {{"\xD1\x01\x02"s, "\x10\x01"s, "\x09"s}}},
      {"no such object", {{"\xD1\x01\x09"s, asciiObject("k"), "\x09"s}}},
      {"huge count", {{"\xDF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s}}},
      {"huge count of long references", {{"\xDF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s}, 8}},
      {"huge text", under({"\x6F\x13\x80\0\0\0\0\0\0\0"s})},
      {"not ASCII", under({"\x51\xFF"s})},
      {"half a surrogate pair", under({"\x62\0a\xD8\x3D"s})},
  };

  std::vector<std::string> doubling;
  for (char level = 3; level < 40; ++level) doubling.push_back("\xA2"s + level + level);
  doubling.push_back("\x09");
  lists["2^37 values in a few bytes"] = under(doubling);

  std::string many = "\xAF\x11\xC3\x50"s;
  for (int index = 0; index < 50'000; ++index) many += '\x03';
  lists["3 GB of text"] = under({many, "\x5F\x12\0\x01\0\0"s + std::string(65'536, 'x')});
  for (const auto& [name, list] : lists) EXPECT_EQ(parsePropertyList(list.bytes()), std::nullopt) << name;
}

TEST(PropertyList, ReadsOldStyleText) {
  const std::vector<std::pair<std::string, Value>> cases{
      {"{k=v;}", "v"},
      {"// c\n{ /* c */ k = \"a \\\"b\\\" \\n\\U00e9\\u0041\\101\\\\ \" ; }", "a \"b\" \n\u00E9AA\\ "},
      {"{k='it is';}", "it is"},
      {"{k=\"\\UD83D\\UDE00\";}", "\U0001F600"},
      {"{k=/usr/bin/a-b_c.d:e$;}", "/usr/bin/a-b_c.d:e$"},
      {"{k=(a,(b),{c=d;},);}", Array{"a", Array{"b"}, Dictionary{{"c", "d"}}}},
      {"{k=();}", Array{}},
      {"{k=<0fBD 77>;}", Data{0x0F, 0xBD, 0x77}},
      {"\"k\" = \"strings table\";\nj;", "strings table"},
      {"\xFE\xFF\0{\0k\0=\0v\0;\0}"s, "v"},
      {"\xFF\xFE{\0k\0=\0\"\0\xE9\0\"\0;\0}\0"s, "\u00E9"},
      {"\xEF\xBB\xBF{k=\"\xC3\xA9\";}", "\u00E9"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(valueIn(text), expected) << text;
  EXPECT_EQ(parsePropertyList("\"k\" = \"v\";\nj;"), (Dictionary{{"k", "v"}, {"j", "j"}}));
}

TEST(PropertyList, TakesNothingFromBrokenOldStyleText) {
  for (const auto& value : {""s, "\"v"s, "\"\\U\""s, "(a b)"s, "<0>"s, "<7\n7>"s, "<0g>"s, "\u00E9"s, "\"\\UD83D\""s,
                            "\"\\UDE00\""s, "\"\\UD83D\\U0041\""s, "\"\xFF\""s, "a\0b"s})
    EXPECT_EQ(parsePropertyList("{k=" + value + ";}"), std::nullopt) << value;
  for (const auto& text : {"{"s, "{k=v}"s, "{k;}"s, "{k=v;} x"s, "/* {k=v;}"s, "(a)"s, "<00>"s, ""s, "  // nothing"s,
                           "a=b; c=d"s, "a=b; c \"d\";"s, "a=b; = ;"s, "a=b; c=\"d;\n\"e\"=\"f\";"s, "a=b; /* c"s,
                           "\xFE\xFF\0k\0;\0"s, "\xFE\xFF\0{\0"s, "\0k\0=\0v\0;"s, "\xFF\xFEk\0=\0v\0;\0x"s})
    EXPECT_EQ(parsePropertyList(text), std::nullopt) << text;
  for (const char* start : {"", "k=", "{k="})
    for (const char huge : {'{', '(', '\\', '"'})
      EXPECT_EQ(parsePropertyList(start + std::string(100'001, huge)), std::nullopt) << start << huge;
  std::string tooMany = "a=b;";
  for (int count = 0; count < 200'000; ++count) tooMany += "k;";
  EXPECT_EQ(parsePropertyList(tooMany), std::nullopt);
}

TEST(PropertyList, BoundsNestingInEveryForm) {
  const auto nested = [](std::size_t levels, const std::string& open, const std::string& close) {
    std::string result;
    for (std::size_t level = 0; level < levels; ++level) result += open;
    for (std::size_t level = 0; level < levels; ++level) result += close;
    return result;
  };
  EXPECT_TRUE(valueIn(xml(nested(100, "<array>", "</array>"))));
  EXPECT_FALSE(valueIn(xml(nested(200'000, "<array>", "</array>"))));
  EXPECT_TRUE(valueIn("{k=" + nested(100, "(", ")") + ";}"));
  EXPECT_FALSE(valueIn("{k=" + nested(200'000, "(", ")") + ";}"));
  for (const int levels : {100, 60'000}) {
    BinaryList list{{"\xD1\0\x01\0\x02"s, asciiObject("k")}, 2};
    for (int level = 0; level < levels; ++level)
      list.objects.push_back("\xA1"s + BinaryList::number(list.objects.size() + 1, 2));
    list.objects.push_back("\x09");
    EXPECT_EQ(valueIn(list.bytes()).has_value(), levels == 100);
  }
}

// Lists with every kind of value, in each form.
std::vector<std::string> samples() {
  return {writeXmlPropertyList(everything()), everyBinaryValue().bytes(),
          "/* list */ {a = yes; \"b c\" = \"\\U00e9\\n\"; d = (1, 2, <0fbd>); e = {f = g;};}",
          "\xFF\xFE{\0a\0=\0b\0;\0c\0=\0(\0d\0,\0e\0)\0;\0}\0"s};
}

TEST(PropertyList, TakesNothingFromAListThatWasCutShort) {
  for (const auto& sample : samples()) {
    ASSERT_TRUE(parsePropertyList(sample));
    const auto end = sample.find_last_not_of('\n') + 1;
    for (std::size_t size = 0; size < end; ++size)
      EXPECT_EQ(parsePropertyList(sample.substr(0, size)), std::nullopt) << size << " bytes of " << sample;
  }
}

std::string mutated(std::string bytes, std::mt19937& random) {
  for (auto change = 1 + random() % 4; change > 0 && !bytes.empty(); --change) {
    const auto at = random() % bytes.size();
    switch (random() % 5) {
      case 0: bytes[at] = static_cast<char>(random()); break;
      case 1: bytes[at] = static_cast<char>(bytes[at] ^ (1 << random() % 8)); break;
      case 2: bytes.erase(at, 1 + random() % 8); break;
      case 3: bytes.insert(at, bytes.substr(random() % bytes.size(), random() % 24)); break;
      case 4: bytes[at] = "\0\xFF<>{}()&;=\"\\/"[random() % 15]; break;
    }
  }
  return bytes;
}

// What survives a mutation must be sound: it can be stored, and what was stored comes back the same.
TEST(PropertyList, GivesNothingOrASoundListForAnyMutation) {
  std::mt19937 random(20260101);
  int survivors = 0;
  for (const auto& sample : samples()) {
    for (int round = 0; round < 8000; ++round) {
      const auto bytes = mutated(sample, random);
      const auto list = parsePropertyList(bytes);
      if (!list) continue;
      ++survivors;
      const auto stored = parsePropertyList(writeXmlPropertyList(*list));
      ASSERT_TRUE(stored) << bytes;
      const auto written = writeXmlPropertyList(*stored);
      const auto again = parsePropertyList(written);
      ASSERT_TRUE(again) << bytes;
      EXPECT_EQ(writeXmlPropertyList(*again), written) << bytes;
    }
  }
  EXPECT_GT(survivors, 1000);
}

}  // namespace
}  // namespace hushpane::desktops::tests

#include "desktops/shared/property_list.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "binary_list.h"
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

// What a list in any form holds under "k".
std::optional<Value> valueIn(const std::string& bytes) {
  const auto list = parsePropertyList(bytes);
  if (!list || !list->contains("k")) return std::nullopt;
  return list->at("k");
}

TEST(PropertyList, GivesBackEverythingThatItWroteAsXml) {
  const auto written = writeXmlPropertyList(everything());
  EXPECT_EQ(parsePropertyList(written), everything());
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
  for (const char* body : {"<integer>1x</integer>",
                           "<integer/>",
                           "<integer>- 1</integer>",
                           "<integer>--1</integer>",
                           "<real>1,5</real>",
                           "<real></real>",
                           "<real>+-1</real>",
                           "<date>yesterday</date>",
                           "<date>2023-02-29T00:00:00Z</date>",
                           "<date>2023-01-01T24:00:00Z</date>",
                           "<data>A</data>",
                           "<data>!!!!</data>",
                           "<data>=AAA</data>",
                           "<data>A=AA</data>",
                           "<bogus/>",
                           "<plist/>",
                           "text",
                           "<true>x</true>",
                           "<string><b/></string>",
                           "<string>&undefined;</string>",
                           "<string>\xFF</string>",
                           "<key>k</key>",
                           "",
                           "<key>j</key><true/>",
                           "<array><key>k</key></array>",
                           "<true/><true/>",
                           "</dict>"})
    EXPECT_EQ(parsePropertyList(xml(body)), std::nullopt) << body;
  for (const char* whole : {"<plist/>", "<plist></plist>", "<plist><true/></plist>", "<plist><dict/><dict/></plist>",
                            "<dict/><dict/>", "<dict/>x", "<plist><dict/></plist><dict/>", "<?xml version=\"1.0\"?>"})
    EXPECT_EQ(parsePropertyList(whole), std::nullopt) << whole;
}

TEST(PropertyList, CountsNumbersBeyondItsRangeAsAbsent) {
  const auto list =
      parsePropertyList(xml("<integer>18446744073709551615</integer><key>j</key><integer>"
                            "-99999999999999999999999</integer><key>i</key><true/>"));
  EXPECT_EQ(list, (Dictionary{{"i", true}}));
}

TEST(PropertyList, ReadsTheBinaryForm) {
  const auto list =
      parsePropertyList(binaryDictionary({"\x08", "\x09", "\x10\xFF", "\x11\xFF\xFE", "\x12\xFF\xFF\xFF\xFD",
                                          "\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFC", "\x22\x3F\xC0\0\0"s,
                                          "\x23\xBF\xF8\0\0\0\0\0\0"s, "\x33\x3F\xE0\0\0\0\0\0\0"s, "\x42\x01\xFF"s,
                                          "\x53ok!"s, "\x63\0\xE9\xD8\x3D\xDE\0"s, "\xA0"s, "\xD0"s})
                            .bytes());
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
  EXPECT_EQ(list, expected);
}

TEST(PropertyList, CountsWhatItCannotHoldInTheBinaryFormAsAbsent) {
  const auto list = parsePropertyList(
      binaryDictionary({"\0"s, "\x80\x01"s, "\x14"s + BinaryList::number(0, 8) + BinaryList::number(~0ull, 8),
                        "\x14"s + BinaryList::number(~0ull, 8) + BinaryList::number(~0ull, 8)})
          .bytes());
  EXPECT_EQ(list, (Dictionary{{"d", -1}}));
}

TEST(PropertyList, TakesNothingFromHostileBinaryLists) {
  const auto whole = [](std::vector<std::string> objects, unsigned referenceSize = 1) {
    return BinaryList{std::move(objects), referenceSize}.bytes();
  };
  EXPECT_EQ(parsePropertyList(whole({"\xD1\x01\0"s, asciiObject("k")})), std::nullopt) << "holds itself";
  EXPECT_EQ(parsePropertyList(whole({"\xD1\x01\x02"s, asciiObject("k"), "\xA1\x03"s, "\xA1\x02"s})), std::nullopt);
  EXPECT_EQ(parsePropertyList(whole({"\xD1\x01\x02"s, "\x10\x01"s, "\x09"s})), std::nullopt) << "key is a number";
  EXPECT_EQ(parsePropertyList(whole({"\xD1\x01\x09"s, asciiObject("k"), "\x09"s})), std::nullopt) << "no such object";
  EXPECT_EQ(parsePropertyList(whole({"\xDF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s})), std::nullopt) << "huge count";
  EXPECT_EQ(parsePropertyList(whole({"\xDF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s}, 8)), std::nullopt);
  EXPECT_EQ(parsePropertyList(whole({"\xD1\x01\x02"s, asciiObject("k"), "\x6F\x13\x80\0\0\0\0\0\0\0"s})), std::nullopt);
  EXPECT_EQ(parsePropertyList(whole({"\xD1\x01\x02"s, asciiObject("k"), "\x51\xFF"s})), std::nullopt) << "not ASCII";
  EXPECT_EQ(parsePropertyList(whole({"\xD1\x01\x02"s, asciiObject("k"), "\x62\0a\xD8\x3D"s})), std::nullopt)
      << "half a surrogate pair";

  std::vector<std::string> doubling{"\xD1\x01\x02"s, asciiObject("k")};
  for (char level = 3; level < 40; ++level) doubling.push_back("\xA2"s + level + level);
  doubling.push_back("\x09");
  EXPECT_EQ(parsePropertyList(whole(doubling)), std::nullopt) << "2^37 values in a few bytes";

  std::string many = "\xAF\x11\xC3\x50"s;
  for (int index = 0; index < 50'000; ++index) many += '\x03';
  const std::string longText = "\x5F\x12\0\x01\0\0"s + std::string(65'536, 'x');
  EXPECT_EQ(parsePropertyList(whole({"\xD1\x01\x02"s, asciiObject("k"), many, longText})), std::nullopt)
      << "3 GB of text";
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
  for (const auto& text : {"{"s,
                           "{k=v}"s,
                           "{k;}"s,
                           "{k=;}"s,
                           "{k=v;} x"s,
                           "{k=\"v;}"s,
                           "{k=\"\\U\";}"s,
                           "{k=(a b);}"s,
                           "{k=<0>;}"s,
                           "{k=<7\n7>;}"s,
                           "{k=\u00E9;}"s,
                           "{k=<0g>;}"s,
                           "/* {k=v;}"s,
                           "{k=\"\\UD83D\";}"s,
                           "{k=\"\\UDE00\";}"s,
                           "{k=\"\\UD83D\\U0041\";}"s,
                           "\xFE\xFF\0k\0;\0"s,
                           "(a)"s,
                           "<00>"s,
                           "{k=\"\xFF\";}"s,
                           ""s,
                           "  // nothing"s,
                           "{k=a\0b;}"s,
                           "\xFE\xFF\0{\0"s,
                           std::string(100'000, '{'),
                           "{k=" + std::string(100'000, '('),
                           std::string(100'000, '\\')})
    EXPECT_EQ(parsePropertyList(text), std::nullopt) << text.substr(0, 20);
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

}  // namespace
}  // namespace hushpane::desktops::tests

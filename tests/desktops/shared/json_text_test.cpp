#include "desktops/shared/json_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace hushpane::desktops {
namespace {

using platform::Data;
using platform::Json;
using platform::JsonArray;
using platform::JsonObject;

Data bytes(std::string_view text) {
  return {text.begin(), text.end()};
}

TEST(JsonTextTest, EveryValueSurvivesAndMembersKeepTheirOrder) {
  const Json value{JsonObject{
      {"z", {nullptr}},
      {"a",
       {JsonArray{{true}, {std::numeric_limits<std::uint64_t>::max()}, {std::numeric_limits<std::int64_t>::min()}}}},
      {"é \"\\\n", {std::string("\xF0\x9F\x99\x82/")}},
      {"", {JsonObject{}}},
      {"r", {0.1}}}};
  const auto text = JsonText().encode(value);
  ASSERT_TRUE(text);
  EXPECT_EQ(std::string(text->begin(), text->end()),
            "{\"z\":null,\"a\":[true,18446744073709551615,-9223372036854775808],"
            "\"é \\\"\\\\\\n\":\"\xF0\x9F\x99\x82/\",\"\":{},\"r\":0.1}");
  EXPECT_EQ(JsonText().decode(*text), value);
}

TEST(JsonTextTest, WhatIsNoJsonTextGivesNothing) {
  for (const std::string_view text : {"", " ", "{", "[1,]", "[1 2]", "{\"a\"}", "{a:1}", "'a'", "nul", "01", "1.", "+1",
                                      "\"\x01\"", "\"\xff\"", "\"\\ud800\"", "[] []", "// note\n[]", "NaN"})
    EXPECT_FALSE(JsonText().decode(bytes(text))) << text;
  EXPECT_FALSE(JsonText().encode({std::string("\xff")}));
}

TEST(JsonTextTest, NestingHasALimitAndCostsLittle) {
  const auto nested = [](std::size_t depth) { return bytes(std::string(depth, '[') + std::string(depth, ']')); };
  EXPECT_TRUE(JsonText().decode(nested(64)));
  EXPECT_FALSE(JsonText().decode(nested(65)));
  EXPECT_FALSE(JsonText().decode(nested(1'000'000)));
}

}  // namespace
}  // namespace hushpane::desktops

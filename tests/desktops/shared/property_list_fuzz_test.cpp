#include <gtest/gtest.h>

#include <random>

#include "binary_list.h"
#include "desktops/shared/property_list.h"
#include "desktops/shared/xml_property_list.h"

namespace hushpane::desktops::tests {
namespace {

using namespace std::string_literals;

// One small list with every kind of value, in each form.
std::vector<std::string> samples() {
  const platform::Dictionary list{{"a", true},
                                  {"b", -5},
                                  {"c", 0.5},
                                  {"d", "text & <more> \u00E9"},
                                  {"e", platform::Data{1, 2, 3}},
                                  {"f", platform::Date{1e9}},
                                  {"g", platform::Array{1, platform::Dictionary{{"h", "i"}}}}};
  return {writeXmlPropertyList(list),
          binaryDictionary({"\x09", "\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFC", "\x23\x3F\xE0\0\0\0\0\0\0"s,
                            "\x62\0a\0\xE9"s, "\x43\x01\x02\x03", "\x33\x41\xB0\0\0\0\0\0\0"s, "\xA2\x03\x04"})
              .bytes(),
          "/* list */ {a = yes; \"b c\" = \"\\U00e9\\n\"; d = (1, 2, <0fbd>); e = {f = g;};}",
          "\xFF\xFE{\0a\0=\0b\0;\0c\0=\0(\0d\0,\0e\0)\0;\0}\0"s};
}

TEST(PropertyListFuzz, TakesNothingFromAListThatWasCutShort) {
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
TEST(PropertyListFuzz, GivesNothingOrASoundListForAnyMutation) {
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

#include "state/display_enablement.h"

#include <gtest/gtest.h>

#include <string>

namespace hushpane {
namespace {

TEST(DisplayEnablementTest, OnlyDecimalDisplayIdsAreTaken) {
  const std::pair<const char*, std::optional<platform::DisplayId>> cases[] = {{"0", 0},
                                                                              {"42", 42},
                                                                              {"+42", 42},
                                                                              {"-0", 0},
                                                                              {"007", 7},
                                                                              {"4294967295", UINT32_MAX},
                                                                              {"4294967296", std::nullopt},
                                                                              {"-1", std::nullopt},
                                                                              {"", std::nullopt},
                                                                              {"+", std::nullopt},
                                                                              {"-", std::nullopt},
                                                                              {"+-0", std::nullopt},
                                                                              {"4 ", std::nullopt},
                                                                              {" 4", std::nullopt},
                                                                              {"0x4", std::nullopt},
                                                                              {"abc", std::nullopt},
                                                                              {"4.0", std::nullopt}};
  for (const auto& [key, id] : cases) {
    const DisplayEnablement expected = id ? DisplayEnablement{{*id, false}} : DisplayEnablement{};
    EXPECT_EQ(decodeDisplayEnablement({{key, false}}), expected) << key;
  }
}

TEST(DisplayEnablementTest, OneValueThatIsNoTruthValueDiscardsAll) {
  EXPECT_EQ(decodeDisplayEnablement({{"1", false}, {"2", 0}}), DisplayEnablement{});
  EXPECT_EQ(decodeDisplayEnablement({{"1", false}, {"abc", "true"}}), DisplayEnablement{});
}

TEST(DisplayEnablementTest, WhatIsEncodedIsDecodedAgain) {
  const DisplayEnablement enablement{{0, true}, {7, false}, {UINT32_MAX, false}};
  EXPECT_EQ(decodeDisplayEnablement(encodeDisplayEnablement(enablement)), enablement);
  EXPECT_TRUE(isEnabled(enablement, 8));
  EXPECT_FALSE(isEnabled(enablement, 7));
}

}  // namespace
}  // namespace hushpane

#include "state/display_enablement.h"

#include <gtest/gtest.h>

#include <utility>

namespace hushpane {
namespace {

TEST(DisplayEnablementTest, OnlyDecimalDisplayIdsAreTaken) {
  using Id = std::pair<const char*, platform::DisplayId>;
  for (const auto& [key, id] :
       {Id{"0", 0}, Id{"42", 42}, Id{"+42", 42}, Id{"-0", 0}, Id{"007", 7}, Id{"4294967295", UINT32_MAX}})
    EXPECT_EQ(decodeDisplayEnablement({{key, false}}), (DisplayEnablement{{id, false}})) << key;
  for (const auto* key : {"4294967296", "-1", "", "+", "-", "+-0", "4 ", " 4", "0x4", "abc", "4.0"})
    EXPECT_EQ(decodeDisplayEnablement({{key, false}}), DisplayEnablement{}) << key;
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

#include "desktops/x11/display_id.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

namespace hushpane::x11 {
namespace {

std::vector<std::uint8_t> edidWithName(const std::string& name, std::size_t descriptor) {
  std::vector<std::uint8_t> edid(128);
  const auto at = 54 + 18 * descriptor;
  edid[at + 3] = 0xFC;
  std::ranges::copy(name, edid.begin() + static_cast<std::ptrdiff_t>(at) + 5);
  return edid;
}

TEST(DisplayIdTest, IsStableAndTellsDisplaysAndConnectorsApart) {
  // The number is stored in people's settings: it must be the same in every version.
  EXPECT_EQ(displayIdOf("a", {}), 0x2b24d044u);
  const auto one = edidWithName("One", 0);
  const auto two = edidWithName("Two", 0);
  const std::set<platform::DisplayId> ids{displayIdOf("DP-1", one), displayIdOf("DP-1", two), displayIdOf("DP-2", one),
                                          displayIdOf("DP-1", {}), displayIdOf("", one)};
  EXPECT_EQ(ids.size(), 5u);
  EXPECT_EQ(displayIdOf("DP-1", one), displayIdOf("DP-1", edidWithName("One", 0)));
}

TEST(DisplayIdTest, FindsTheProductNameInAnyDescriptor) {
  for (const std::size_t descriptor : {0u, 1u, 3u})
    EXPECT_EQ(productNameOf(edidWithName("Panel 27\n   ", descriptor)), "Panel 27");
  EXPECT_EQ(productNameOf(edidWithName("Thirteen char", 2)), "Thirteen char") << "no terminator when it is full";
  EXPECT_EQ(productNameOf(std::vector<std::uint8_t>(128)), "");
  auto cut = edidWithName("Panel", 3);
  cut.resize(120);
  EXPECT_EQ(productNameOf(cut), "") << "a truncated block";
  EXPECT_EQ(productNameOf({}), "");
}

}  // namespace
}  // namespace hushpane::x11

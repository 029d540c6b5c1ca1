#include "ui/menu/menu_bar_icon.h"

#include <gtest/gtest.h>

#include <cmath>

#include "desktops/shared/template_picture.h"

namespace hushpane::tests {
namespace {

constexpr std::uint32_t opaque = 255, split = 97, band = 33;

std::vector<std::uint32_t> alphas(int side, bool isActive, bool isRow, double at) {
  const platform::TemplateImage icon{menuBarIconSize, [isActive](platform::Canvas& canvas, double pixelsPerPoint) {
                                       drawMenuBarIcon(canvas, pixelsPerPoint, isActive);
                                     }};
  const auto picture = desktops::templatePicture(icon, side, platform::black);
  const int line = static_cast<int>(at * side);
  std::vector<std::uint32_t> values;
  for (int index = 0; index < side; ++index)
    values.push_back(picture.pixels[std::size_t(isRow ? line * side + index : index * side + line)] >> 24);
  return values;
}

// Each value once for each run of it.
std::vector<std::uint32_t> runs(std::vector<std::uint32_t> values) {
  values.erase(std::unique(values.begin(), values.end()), values.end());
  std::erase(values, 0u);
  return values;
}

TEST(MenuBarIcon, IsSharpAndTellsItsStatesApartAtEverySizeOfTrays) {
  using Values = std::vector<std::uint32_t>;
  for (const int side : {16, 18, 20, 22, 24, 32, 40, 44, 48, 64}) {
    SCOPED_TRACE(side);
    const auto inactive = alphas(side, false, true, 0.5), active = alphas(side, true, true, 0.5);
    EXPECT_EQ(runs(inactive), (Values{opaque, split, band, opaque})) << "no pixel is between";
    EXPECT_EQ(runs(active), (Values{opaque, opaque}));
    EXPECT_EQ(runs(alphas(side, false, false, 0.3)), (Values{opaque, opaque})) << "from top to bottom";

    const auto line = std::max(1l, std::lround(side / 20.0));
    EXPECT_EQ(std::ranges::count(inactive, opaque), 2 * line);
    EXPECT_EQ(std::ranges::count(inactive, split), line);
    EXPECT_GE(std::ranges::count(inactive, band), side * 3 / 20) << "wide enough to be seen";
    EXPECT_GT(std::ranges::count(active, opaque), 5 * line);
    const auto first = std::ranges::find(inactive, split) - inactive.begin();
    EXPECT_EQ(active[std::size_t(first)], opaque) << "it fills from the split on";
    EXPECT_EQ(active[std::size_t(first - 1)], 0u);
    for (const bool isRow : {true, false}) {
      const auto across = alphas(side, false, isRow, isRow ? 0.4 : 0.3);
      const auto middle = std::ranges::find(across, opaque) - across.begin();
      EXPECT_EQ(across[across.size() - 1 - std::size_t(middle)], opaque) << "in the middle of its square";
    }
  }
}

}  // namespace
}  // namespace hushpane::tests

#include "app/panel_placement.h"

#include <gtest/gtest.h>

namespace hushpane::tests {
namespace {

using platform::Rect;

constexpr Rect display{100, 0, 1000, 800}, visible{100, 30, 1000, 740};

TEST(PanelPlacement, IsBesideTheItemAndInsideTheDisplay) {
  constexpr platform::Size size{300, 200};
  const auto beside = [&](const Rect& item) { return placement::beside(item, size, display, visible, 6); };
  EXPECT_EQ(beside({600, 0, 20, 30}), (Rect{460, 36, 300, 200}));
  EXPECT_EQ(beside({600, 770, 20, 30}), (Rect{460, 564, 300, 200})) << "above an item at the bottom";
  EXPECT_EQ(beside({110, 0, 20, 30}).x, 106);
  EXPECT_EQ(beside({1090, 0, 20, 30}).right(), 1094);
  EXPECT_EQ(placement::beside({600, 0, 20, 30}, {2000, 2000}, display, visible, 6), (Rect{106, 36, 2000, 2000}))
      << "what is too large begins inside";
}

TEST(PanelPlacement, AListOpensWhereThereIsMoreRoom) {
  const auto list = [](double labelY, double height) {
    return placement::pullDown({200, labelY, 40, 20}, {150, height}, visible, 6);
  };
  EXPECT_EQ(list(100, 300), (Rect{200, 120, 150, 300}));
  EXPECT_EQ(list(700, 300), (Rect{200, 400, 150, 300})) << "above a label at the bottom";
  EXPECT_EQ(list(500, 900), (Rect{200, 36, 150, 464})) << "as high as the room above";
  EXPECT_EQ(placement::room({200, 500, 40, 20}, visible, 6), 464);
  EXPECT_EQ(placement::pullDown({1060, 100, 40, 20}, {150, 90}, visible, 6).right(), 1094);
}

TEST(PanelPlacement, WithoutAnItemItIsInTheCornerOfTheBar) {
  EXPECT_EQ(placement::corner(display, display), (Rect{1100, 0, 0, 0})) << "no bar";
  EXPECT_EQ(placement::corner(display, {100, 30, 1000, 770}), (Rect{1100, 30, 0, 0}));
  EXPECT_EQ(placement::corner(display, {100, 0, 1000, 770}), (Rect{1100, 770, 0, 0}));
  EXPECT_EQ(placement::corner(display, {140, 0, 960, 800}), (Rect{140, 0, 0, 0})) << "at the left";
}

}  // namespace
}  // namespace hushpane::tests

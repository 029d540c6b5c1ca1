#include "desktops/x11/work_area.h"

#include <gtest/gtest.h>

namespace hushpane::x11 {

void PrintTo(const PixelRect& rect, std::ostream* out) {
  *out << rect.width << 'x' << rect.height << '+' << rect.x << '+' << rect.y;
}

namespace {

constexpr PixelRect root{0, 0, 3000, 1000};
constexpr PixelRect left{0, 0, 1800, 1000}, right{1800, 0, 1200, 800};

TEST(WorkArea, OfEachMonitorCountsWhereTheManagerTellsIt) {
  const WorkAreas areas{{{1800, 0, 1200, 800}, {0, 32, 1800, 968}}, PixelRect{0, 500, 3000, 500}, root};
  EXPECT_EQ(freeArea(left, {}, areas), (PixelRect{0, 32, 1800, 968}));
  EXPECT_EQ(freeArea(right, {}, areas), right);
  const Strut dock{Strut::Edge::left, {0, 0, 60, 1000}};
  EXPECT_EQ(freeArea(left, std::span(&dock, 1), areas), (PixelRect{60, 32, 1740, 968})) << "both leave less";
}

TEST(WorkArea, OfAllMonitorsTellsOfBarsAtOuterEdgesThatAreNoWindows) {
  const auto freeOn = [](const PixelRect& screen, const PixelRect& all, std::span<const Strut> struts = {}) {
    return freeArea(screen, struts, {{}, all, root});
  };
  EXPECT_EQ(freeOn(left, {0, 32, 3000, 928}), (PixelRect{0, 32, 1800, 928}));
  EXPECT_EQ(freeOn(right, {0, 32, 2960, 928}), (PixelRect{1800, 32, 1160, 768})) << "its lower edge is no outer one";
  const Strut bar{Strut::Edge::top, {1800, 0, 1200, 32}};
  EXPECT_EQ(freeOn(left, {0, 32, 3000, 968}, std::span(&bar, 1)), left) << "the bar stands on the other one";
  EXPECT_EQ(freeOn(right, {0, 32, 3000, 968}, std::span(&bar, 1)), (PixelRect{1800, 32, 1200, 768}));
  EXPECT_EQ(freeOn(left, {0, 64, 3000, 936}, std::span(&bar, 1)), (PixelRect{0, 64, 1800, 936})) << "and a second one";
}

TEST(WorkArea, NonsenseIsIgnored) {
  const Strut bar{Strut::Edge::top, {0, 0, 3000, 30}};
  constexpr PixelRect free{0, 30, 1800, 970};
  for (const PixelRect& nonsense :
       {PixelRect{}, {0, 0, 0, 0}, {0, 0, -20, -20}, {0, 0, 1800, 300}, {1790, 0, 10, 1000}, {5000, 5000, 100, 100}}) {
    EXPECT_EQ(freeArea(left, std::span(&bar, 1), {{}, nonsense, root}), free) << testing::PrintToString(nonsense);
    EXPECT_EQ(freeArea(left, std::span(&bar, 1), {{nonsense}, std::nullopt, root}), free);
  }
  EXPECT_EQ(freeArea(left, std::span(&bar, 1), {{{0, 0, 3000, 1000}}, std::nullopt, root}), free)
      << "larger than the monitor";
}

}  // namespace
}  // namespace hushpane::x11

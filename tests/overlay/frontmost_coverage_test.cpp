#include "overlay/frontmost_coverage.h"

#include <gtest/gtest.h>

#include <cmath>

namespace hushpane {
namespace {

using platform::Rect;
using platform::WindowInfo;

constexpr std::int32_t front = 50;

const std::vector<platform::Screen> screens{{{0, 0, 1000, 800}, 1, "A", 1}, {{1000, 0, 2000, 1000}, 2, "B", 1}};

WindowInfo window(const Rect& bounds, platform::WindowNumber number = 5) {
  return {front, 0, 1.0, {bounds.x, bounds.y, bounds.width, bounds.height}, number};
}

FrontmostCoverage coverage(std::vector<WindowInfo> windows) {
  return coverageOf(front, windows, screens);
}

std::optional<platform::WindowNumber> number(std::vector<WindowInfo> windows) {
  return frontWindowNumber(front, windows, screens);
}

TEST(FrontmostCoverageTest, OnlyOrdinaryVisibleWindowsOfTheApplicationCount) {
  const WindowInfo good = window({0, 0, 300, 300});
  ASSERT_TRUE(coverage({good}).hasWindow);
  const std::pair<const char*, void (*)(WindowInfo&)> faults[] = {
      {"owner", [](WindowInfo& w) { w.ownerPid = 51; }},
      {"no owner", [](WindowInfo& w) { w.ownerPid.reset(); }},
      {"layer", [](WindowInfo& w) { w.layer = 3; }},
      {"no layer", [](WindowInfo& w) { w.layer.reset(); }},
      {"alpha", [](WindowInfo& w) { w.alpha = 0.01; }},
      {"no alpha", [](WindowInfo& w) { w.alpha.reset(); }},
      {"no width", [](WindowInfo& w) { w.bounds.width.reset(); }},
      {"no height", [](WindowInfo& w) { w.bounds.height.reset(); }},
      {"not a number", [](WindowInfo& w) { w.bounds.height = std::nan(""); }},
  };
  for (const auto& [name, spoil] : faults) {
    WindowInfo bad = good;
    spoil(bad);
    EXPECT_EQ(coverage({bad}), FrontmostCoverage{}) << name;
    EXPECT_EQ(number({bad}), std::nullopt) << name;
    EXPECT_TRUE(coverage({bad, good}).hasWindow) << name << " must not hide the window behind";
  }
}

TEST(FrontmostCoverageTest, APlaceIsNeededForCoverageOnlyAndANumberForTheSearchOnly) {
  WindowInfo placeless = window({0, 0, 300, 300});
  placeless.bounds.x.reset();
  EXPECT_FALSE(coverage({placeless}).hasWindow);
  EXPECT_EQ(number({placeless}), 5u);
  WindowInfo numberless = window({0, 0, 300, 300});
  numberless.number.reset();
  EXPECT_TRUE(coverage({numberless}).hasWindow);
  EXPECT_EQ(number({numberless, window({0, 0, 300, 300}, 6)}), 6u);
}

TEST(FrontmostCoverageTest, SmallWindowsAreFoundButDoNotCover) {
  EXPECT_FALSE(coverage({window({0, 0, 100, 300})}).hasWindow);
  EXPECT_EQ(number({window({0, 0, 21, 300})}), 5u);
  EXPECT_EQ(number({window({0, 0, 300, 20})}), std::nullopt);
}

TEST(FrontmostCoverageTest, RatiosDecideWhatIsTouchedAndFilled) {
  struct Case {
    const char* name;
    Rect bounds;
    std::set<platform::DisplayId> touched, covered;
  };
  const Case cases[] = {
      {"a tenth is not touched", {0, 0, 400, 200}, {}, {}},
      {"just above a tenth", {0, 0, 400, 201}, {1}, {}},
      {"92 % is not filled", {0, 0, 1000, 736}, {1}, {}},
      {"just above 92 %", {0, 0, 1000, 737}, {1}, {1}},
      {"the same size, half off the screen", {-500, 0, 1000, 800}, {1}, {}},
      {"the same size, a little more than half on", {-499, 0, 1000, 800}, {1}, {1}},
      {"11 points off in both sides, 60 % on", {-400, 0, 1011, 789}, {1}, {1}},
      {"12 points off, 60 % on", {-400, 0, 1012, 800}, {1}, {}},
      {"over both", {890, 0, 2110, 1000}, {1, 2}, {2}},
      {"beyond all screens", {5000, 5000, 400, 400}, {}, {}},
  };
  for (const auto& test : cases) {
    const auto result = coverage({window(test.bounds)});
    EXPECT_EQ(result.touched, test.touched) << test.name;
    EXPECT_EQ(result.covered, test.covered) << test.name;
    EXPECT_EQ(result.area, test.bounds.area()) << test.name;
  }
}

TEST(FrontmostCoverageTest, TheLargestWindowGivesTheAreaAndAllGiveTheDisplays) {
  const auto result = coverage({window({0, 0, 300, 300}), window({1000, 0, 2000, 1000}), window({0, 0, 400, 300})});
  EXPECT_EQ(result.area, 2000.0 * 1000);
  EXPECT_EQ(result.touched, (std::set<platform::DisplayId>{1, 2}));
  EXPECT_EQ(result.covered, (std::set<platform::DisplayId>{2}));
}

TEST(FrontmostCoverageTest, TheSearchPassesOverWindowsThatFillAScreen) {
  EXPECT_EQ(number({window({0, 0, 1000, 800}, 1), window({10, 10, 500, 500}, 2)}), 2u);
  EXPECT_EQ(number({window({0, 0, 1000, 800}, 1)}), std::nullopt);
  EXPECT_EQ(number({window({0, 0, 1000, 740}, 1)}), 1u) << "filled by its ratio alone: not passed over";
  const std::vector<WindowInfo> filling{window({0, 0, 1000, 800}, 1)};
  EXPECT_EQ(frontWindowNumber(front, filling, {}), 1u) << "without screens nothing can be filled";
}

TEST(FrontmostCoverageTest, AScreenWithoutAnIdIsNoDisplay) {
  const std::vector<WindowInfo> windows{window({0, 0, 1000, 800})};
  const std::vector<platform::Screen> nameless{{{0, 0, 1000, 800}, std::nullopt, "?", 1}};
  const auto result = coverageOf(front, windows, nameless);
  EXPECT_TRUE(result.hasWindow);
  EXPECT_TRUE(result.covered.empty() && result.touched.empty());
}

}  // namespace
}  // namespace hushpane

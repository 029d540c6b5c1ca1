#include "tests/x11/panel_desktop.h"

namespace hushpane::x11_tests {
namespace {

using ScaledPanelX11Test = PanelDesktop;
INSTANTIATE_TEST_SUITE_P(Desktop, ScaledPanelX11Test, testing::Values(false), [](const auto&) { return "Plain"; });

constexpr double distanceFromBar = 6;  // points

struct Bar {
  int height = 0;  // pixels
  bool isAtTop = false;
};

// Beside a thin bar the panel's shadow begins outside the display.
TEST_P(ScaledPanelX11Test, FitsTheScreensScaleBesideEveryBar) {
  const std::map<double, std::vector<Bar>> bars{
      {1, {{42, true}}}, {1.5, {{24, true}, {56, false}}}, {2, {{24, false}, {42, true}, {56, true}}}};
  for (const auto& [scale, some] : bars) {
    startScaled(scale);
    for (const auto [height, isAtTop] : some) {
      const auto name = std::to_string(int(96 * scale)) + (isAtTop ? "-top-" : "-bottom-") + std::to_string(height);
      SCOPED_TRACE(name);
      startTray(isAtTop ? Tray::Edge::top : Tray::Edge::bottom, height);
      ASSERT_TRUE(waitUntil([&] { return icon().has_value(); }));
      clickIcon();
      EXPECT_TRUE(looksAsItShould());
      const double gap = distanceFromBar * scale;
      EXPECT_NEAR(outline().x, gap, 1);
      if (isAtTop)
        EXPECT_NEAR(outline().y, height + gap, 1);
      else
        EXPECT_NEAR(outline().bottom(), leftMonitor.bottom() - height - gap, 1);
      shot("panel-" + name);
      clickIcon();
      endTray();
    }
    EXPECT_EQ(stopHushpane(), 0);
  }
}

}  // namespace
}  // namespace hushpane::x11_tests

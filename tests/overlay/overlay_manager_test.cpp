#include "overlay/overlay_manager.h"

#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

constexpr RenderedState standard{};
constexpr RenderedState clean{true, false, VeilMode::cleanDesktop};
constexpr RenderedState focus{false, true, VeilMode::focus};

class OverlayManagerTest : public SimulatedProgram {
 protected:
  void SetUp() override { launch(); }

  void apply(const RenderedState& state, bool immediate = false, std::optional<double> fadeOut = {}) {
    overlays().apply(state, immediate, fadeOut);
    desktop->drain();
  }
};

TEST_F(OverlayManagerTest, EveryScreenWithAnIdHasOneInvisibleClickThroughWindow) {
  desktop->screens().add({{0, 800, 500, 500}, std::nullopt, "Nameless", 1});
  desktop->drain();
  ASSERT_EQ(desktop->windows().ownWindows().size(), 2u);
  for (const auto* window : desktop->windows().ownWindows()) {
    EXPECT_FALSE(window->isOnScreen());
    EXPECT_EQ(window->alpha(), 0);
    EXPECT_TRUE(window->configuration().ignoresMouseEvents);
    EXPECT_FALSE(window->configuration().canBecomeKeyWindow || window->configuration().canBecomeMainWindow);
    EXPECT_FALSE(window->configuration().hasShadow || window->configuration().isOpaque);
  }
}

TEST_F(OverlayManagerTest, FadesTakeTheirTimeAndEndOrderedOut) {
  apply(clean);
  auto& window = overlay(leftScreen);
  EXPECT_TRUE(window.isOnScreen());
  EXPECT_EQ(window.presentationAlpha(), 0);
  desktop->advance(0.35);
  EXPECT_GT(window.presentationAlpha(), 0.5) << "ease-out is past the middle at half time";
  EXPECT_LT(window.presentationAlpha(), 1);
  desktop->advance(0.37);
  EXPECT_EQ(window.presentationAlpha(), 1);
  EXPECT_FALSE(desktop->frameClock().isRunning());

  apply(standard);
  desktop->advance(0.68);
  EXPECT_TRUE(window.isOnScreen());
  desktop->advance(0.05);
  EXPECT_FALSE(window.isOnScreen());
  EXPECT_EQ(window.alpha(), 0);

  apply(clean, true);
  EXPECT_EQ(window.presentationAlpha(), 1) << "at once";
  apply(standard, false, 0.22);
  desktop->advance(0.25);
  EXPECT_FALSE(window.isOnScreen());

  apply(clean, true);
  apply(standard, true);
  EXPECT_FALSE(window.isOnScreen()) << "at once";
  EXPECT_EQ(window.presentationAlpha(), 0);
}

TEST_F(OverlayManagerTest, AnInterruptedFadeGoesOnFromWhereItIsAndTheWindowStays) {
  apply(clean, true);
  apply(standard);
  desktop->advance(0.3);
  const double atTurn = overlay(leftScreen).presentationAlpha();
  ASSERT_GT(atTurn, 0);
  ASSERT_LT(atTurn, 0.8);
  apply(clean);
  EXPECT_EQ(overlay(leftScreen).presentationAlpha(), atTurn);
  desktop->advance(1.0 / 60);
  EXPECT_GT(overlay(leftScreen).presentationAlpha(), atTurn);
  desktop->advance(2);
  EXPECT_TRUE(overlay(leftScreen).isOnScreen());
  EXPECT_EQ(overlay(leftScreen).presentationAlpha(), 1);
}

TEST_F(OverlayManagerTest, ADisabledDisplayStaysFreeToThePixel) {
  openApplication("Front", {100, 100, 400, 300});
  const auto before = desktop->render(leftScreen).pixels, beforeRight = desktop->render(rightScreen).pixels;
  overlays().setDisplayEnablement({{7, false}, {12345, true}});
  for (const auto& [state, level] : {std::pair{clean, -1}, {focus, 0}, {clean, -1}}) {
    apply(state, true);
    desktop->advance(1);
    EXPECT_FALSE(overlay(leftScreen).isOnScreen());
    EXPECT_EQ(overlay(rightScreen).shownLevel(), level);
    EXPECT_EQ(desktop->render(leftScreen).pixels, before);
    EXPECT_NE(desktop->render(rightScreen).pixels, beforeRight);
  }
  overlays().setDisplayEnablement({{9, false}});
  apply(focus);
  desktop->advance(1);
  EXPECT_TRUE(overlay(leftScreen).isOnScreen());
  EXPECT_FALSE(overlay(rightScreen).isOnScreen());
}

TEST_F(OverlayManagerTest, DisplaysComeMoveAndGoUnderACover) {
  int announcements = 0;
  const auto observer =
      desktop->notificationCenter().addObserver(OverlayManager::displaysDidChange, [&] { ++announcements; });
  state().setMode(VeilMode::cleanDesktop);
  desktop->advance(1);
  const platform::Screen third{{0, 800, 640, 480}, 11, "Third", 1};
  desktop->screens().add(third);
  desktop->drain();
  EXPECT_EQ(overlay(third).presentationAlpha(), 1) << "at once, without a fade";
  EXPECT_EQ(overlay(third).shownLevel(), -1);

  const platform::Rect moved{0, 800, 800, 600};
  auto* const window = &overlay(third);
  desktop->screens().change(11, moved);
  desktop->drain();
  EXPECT_EQ(desktop->windows().ownWindow(moved), window);

  desktop->screens().remove(11);
  desktop->drain();
  EXPECT_EQ(desktop->windows().ownWindows().size(), 2u);
  EXPECT_EQ(overlays().overlayWindows().size(), 2u);
  EXPECT_TRUE(overlay(leftScreen).isOnScreen());
  EXPECT_EQ(announcements, 3);
}

TEST_F(OverlayManagerTest, ADisplayMayGoWhileItsWindowFades) {
  apply(clean);
  apply(standard);
  desktop->screens().remove(9);
  desktop->drain();
  desktop->advance(2);
  EXPECT_EQ(desktop->windows().ownWindows().size(), 1u);
}

TEST_F(OverlayManagerTest, WakingAppliesTheStateAgainWithoutFades) {
  apply(clean);
  desktop->advance(0.1);
  ASSERT_LT(overlay(leftScreen).presentationAlpha(), 1);
  desktop->workspace().wake();
  desktop->drain();
  EXPECT_EQ(overlay(leftScreen).presentationAlpha(), 1);
}

}  // namespace
}  // namespace hushpane::tests

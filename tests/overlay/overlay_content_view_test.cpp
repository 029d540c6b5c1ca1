#include "overlay/overlay_content_view.h"

#include <algorithm>

#include "support/simulated_program.h"

namespace hushpane::tests {
namespace {

constexpr RenderedState standard{};
constexpr RenderedState clean{true, false, VeilMode::cleanDesktop};
constexpr RenderedState focus{false, true, VeilMode::focus};
constexpr double fade = 0.72;  // seconds, a frame more than a surface fade takes

class OverlayContentViewTest : public SimulatedProgram {
 protected:
  void SetUp() override { launch(); }

  platform::View& effect() { return surface(0); }
  platform::View& dim() { return surface(1); }
  platform::View& wallpaper() { return surface(2); }
  platform::View& surface(std::size_t index) { return *overlay(leftScreen).contentView().subviews().at(index); }

  void apply(const RenderedState& state, bool animated = true) {
    overlays().overlayWindows().at(7)->contentView().apply(state, animated);
  }
  void settle() { desktop->advance(fade); }
  // The surfaces that are to be seen, as letters.
  std::string seen() {
    std::string letters;
    if (!effect().isHidden() && effect().presentationAlpha() > 0) letters += 'B';
    if (!dim().isHidden() && dim().presentationAlpha() > 0) letters += 'D';
    if (!wallpaper().isHidden() && wallpaper().presentationAlpha() > 0) letters += 'W';
    return letters;
  }
  PreferencesStore& preferences() { return PreferencesStore::shared(); }
};

TEST_F(OverlayContentViewTest, EachRoleShowsItsOwnSurface) {
  preferences().ambientSurfaceRaw = "wallpaper";
  preferences().focusSurfaceRaw = "dim";
  EXPECT_EQ(seen(), "");
  apply(clean);
  settle();
  EXPECT_EQ(seen(), "W");
  apply(focus);
  settle();
  EXPECT_EQ(seen(), "D");
  apply({true, true, VeilMode::cleanDesktop});
  settle();
  EXPECT_EQ(seen(), "W") << "clean desktop wins";
  preferences().focusSurfaceRaw = "Dim";
  apply(focus);
  settle();
  EXPECT_EQ(seen(), "B") << "stands in for an unknown one";
  apply(standard);
  settle();
  EXPECT_EQ(seen(), "");
  for (auto* surface : {&effect(), &dim(), &wallpaper()}) EXPECT_TRUE(surface->isHidden());
}

TEST_F(OverlayContentViewTest, TheDimHasThreeStrengthsPerRoleAndChangesSlowly) {
  preferences().focusSurfaceRaw = "dim";
  apply(focus);
  settle();
  preferences().ambientSurfaceRaw = "dim";
  preferences().ambientDimIntensityRaw = "strong";
  double before = dim().presentationLayerColor()->alpha;
  for (const auto& [text, alpha] : {std::pair{"subtle", 0.3}, {"balanced", 0.5}, {"strong", 0.7}, {"Strong", 0.5}}) {
    preferences().focusDimIntensityRaw = text;
    apply(focus);
    desktop->advance(0.2);
    const double between = dim().presentationLayerColor()->alpha;
    EXPECT_TRUE(std::min(before, alpha) < between && between < std::max(before, alpha)) << text << ": " << between;
    settle();
    EXPECT_EQ(dim().presentationLayerColor(), (platform::Color{0, 0, 0, alpha})) << text;
    before = alpha;
  }
  apply(clean);
  EXPECT_EQ(dim().layerColor()->alpha, 0.7);
}

TEST_F(OverlayContentViewTest, SurfacesCrossFadeAlsoWhenTheStateIsAppliedAtOnce) {
  apply(focus, false);
  settle();
  preferences().focusSurfaceRaw = "dim";
  apply(focus, false);
  desktop->advance(0.3);
  EXPECT_EQ(seen(), "BD");
  const double effectAlpha = effect().presentationAlpha();
  EXPECT_GT(effectAlpha, 0);
  EXPECT_LT(effectAlpha, 1);
  preferences().focusSurfaceRaw = "blur";
  apply(focus);
  EXPECT_EQ(effect().presentationAlpha(), 0) << "a surface that was fading out comes in from nothing";
  settle();
  EXPECT_EQ(seen(), "B");
}

TEST_F(OverlayContentViewTest, DimmedPixelsAreTheBlendOfBlackAndWhatIsBehind) {
  preferences().ambientSurfaceRaw = "dim";
  const auto before = desktop->render(leftScreen).pixels;
  state().setMode(VeilMode::cleanDesktop);
  desktop->advance(2);
  const auto after = desktop->render(leftScreen).pixels;
  for (std::size_t index = 0; index < before.size(); index += 4099)
    for (const int shift : {0, 8, 16})
      EXPECT_NEAR((after[index] >> shift) & 255, ((before[index] >> shift) & 255) / 2, 1);
}

}  // namespace
}  // namespace hushpane::tests

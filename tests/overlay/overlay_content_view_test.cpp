#include "overlay/overlay_content_view.h"

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
  apply(standard);
  settle();
  EXPECT_EQ(seen(), "");
  EXPECT_TRUE(wallpaper().isHidden());
}

TEST_F(OverlayContentViewTest, AnUnknownSurfaceIsBlurAndAnUnknownStrengthIsBalanced) {
  preferences().focusSurfaceRaw = "Dim";
  apply(focus);
  settle();
  EXPECT_EQ(seen(), "B");
  preferences().focusSurfaceRaw = "dim";
  preferences().focusDimIntensityRaw = "Strong";
  apply(focus);
  EXPECT_EQ(dim().layerColor(), (platform::Color{0, 0, 0, 0.5}));
}

TEST_F(OverlayContentViewTest, TheDimHasThreeStrengthsPerRole) {
  preferences().ambientSurfaceRaw = "dim";
  preferences().focusSurfaceRaw = "dim";
  preferences().ambientDimIntensityRaw = "strong";
  for (const auto& [text, alpha] : {std::pair{"subtle", 0.3}, {"balanced", 0.5}, {"strong", 0.7}}) {
    preferences().focusDimIntensityRaw = text;
    apply(focus);
    settle();
    EXPECT_EQ(dim().presentationLayerColor(), (platform::Color{0, 0, 0, alpha}));
  }
  preferences().focusDimIntensityRaw = "subtle";
  apply(clean);
  EXPECT_EQ(dim().layerColor()->alpha, 0.7);
}

TEST_F(OverlayContentViewTest, AChangeOfStrengthStartsFromTheColourOnScreen) {
  preferences().focusSurfaceRaw = "dim";
  preferences().focusDimIntensityRaw = "subtle";
  apply(focus);
  settle();
  preferences().focusDimIntensityRaw = "strong";
  apply(focus);
  desktop->advance(0.2);
  const double between = dim().presentationLayerColor()->alpha;
  EXPECT_GT(between, 0.3);
  EXPECT_LT(between, 0.7);
  preferences().focusDimIntensityRaw = "subtle";
  apply(focus);
  EXPECT_EQ(dim().presentationLayerColor()->alpha, between);
  desktop->advance(1.0 / 60);
  EXPECT_LT(dim().presentationLayerColor()->alpha, between);
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

TEST_F(OverlayContentViewTest, HidingAtOnceDropsThePictureHidingWithAFadeKeepsIt) {
  preferences().ambientSurfaceRaw = "wallpaper";
  apply(clean);
  settle();
  ASSERT_NE(wallpaper().contents(), nullptr);
  apply(standard, true);
  settle();
  EXPECT_NE(wallpaper().contents(), nullptr);
  apply(clean);
  apply(standard, false);
  EXPECT_EQ(seen(), "");
  EXPECT_EQ(wallpaper().contents(), nullptr);

  apply(clean);
  settle();
  ASSERT_NE(wallpaper().contents(), nullptr);
  preferences().ambientSurfaceRaw = "blur";
  apply(clean);
  EXPECT_EQ(wallpaper().contents(), nullptr) << "another surface is shown";
}

TEST_F(OverlayContentViewTest, ThePictureIsSeenOnTheScreen) {
  preferences().ambientSurfaceRaw = "wallpaper";
  state().setMode(VeilMode::cleanDesktop);
  desktop->advance(2);
  const auto image = wallpaper().contents();
  ASSERT_NE(image, nullptr);
  const auto screen = desktop->render(leftScreen);
  const auto picked = screen.pixels[static_cast<std::size_t>(screen.width) * (screen.height / 2) + screen.width / 2];
  const auto expected = image->pixels[static_cast<std::size_t>(image->width) * (image->height / 2) + image->width / 2];
  for (const int shift : {0, 8, 16})
    EXPECT_NEAR((picked >> shift) & 255, (expected >> shift) & 255, 6) << "centre of an aspect fill";
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

#include "desktops/sim/compositor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "desktops/shared/look.h"
#include "desktops/sim/sim_platform.h"

namespace hushpane::sim {
namespace {

using platform::Color;
using platform::Image;
using platform::Rect;

constexpr Rect screenFrame{0, 0, 400, 300};

Color colorOf(std::uint32_t pixel) {
  const auto channel = [pixel](unsigned shift) { return (pixel >> shift & 0xff) / 255.0; };
  return {channel(16), channel(8), channel(0), channel(24)};
}

testing::AssertionResult isNear(const Color& found, const Color& expected, double tolerance = 2.0 / 255) {
  const std::array differences{found.red - expected.red, found.green - expected.green, found.blue - expected.blue};
  if (std::ranges::all_of(differences, [&](double difference) { return std::abs(difference) <= tolerance; }))
    return testing::AssertionSuccess();
  return testing::AssertionFailure() << found.red << " " << found.green << " " << found.blue << " instead of "
                                     << expected.red << " " << expected.green << " " << expected.blue;
}

platform::ImagePtr plainImage(int width, int height, std::uint32_t color) {
  return std::make_shared<Image>(
      Image{width, height, std::vector<std::uint32_t>(static_cast<std::size_t>(width * height), color)});
}

// A screen full of one white window with a black one on its left half, and a cover in front of both.
class CompositorTest : public testing::Test {
 protected:
  Storage storage;
  SimPlatform desktop{storage, {{screenFrame, 1, "Screen", 1}}};
  std::unique_ptr<platform::Window> cover;

  void SetUp() override {
    desktop.windows().add({.frame = {-50, -50, 500, 400}, .color = {1, 1, 1, 1}});
    // A bar, because it has no shadow; what it holds is far below the screen.
    desktop.windows().add({.frame = {-50, -50, 250, 2000}, .color = {0, 0, 0, 1}, .contents = AppContents::bar});
    cover = desktop.windows().makeWindow(screenFrame, {.isOpaque = false});
    cover->orderFront();
  }
  Color at(double x, double y) { return colorOf(desktop.pixel({x, y}).value()); }
};

TEST_F(CompositorTest, SubviewsCoverEachOtherAndAlphasOfLayerViewAndWindowMultiply) {
  auto& below = cover->contentView().addSubview();
  auto& view = cover->contentView().addSubview();
  below.setLayerColor({1, 0, 0, 1});
  view.setLayerColor({0, 0, 1, 1});
  EXPECT_TRUE(isNear(at(320, 150), {0, 0, 1}));
  below.setHidden(true);
  view.setLayerColor({0, 0, 0, 0.5});
  EXPECT_TRUE(isNear(at(320, 150), {0.5, 0.5, 0.5}));
  view.setAlpha(0.5);
  EXPECT_TRUE(isNear(at(320, 150), {0.75, 0.75, 0.75}));
  cover->setAlpha(0.4);
  EXPECT_TRUE(isNear(at(320, 150), {0.9, 0.9, 0.9}));
  view.setHidden(true);
  EXPECT_TRUE(isNear(at(320, 150), {1, 1, 1}));
  EXPECT_TRUE(isNear(at(100, 150), {0, 0, 0}));
}

TEST_F(CompositorTest, TheDarkMaterialBlursWhatLiesBehindUnderItsTint) {
  cover->contentView().setMaterial(platform::EffectMaterial::darkHud);
  const auto& tint = desktops::darkHud::tint;
  const auto tinted = [&](double level) {
    const auto mix = [&](double channel) { return level + (channel - level) * tint.alpha; };
    return Color{mix(tint.red), mix(tint.green), mix(tint.blue)};
  };
  EXPECT_TRUE(isNear(at(20, 150), tinted(0))) << "far inside the black";
  EXPECT_TRUE(isNear(at(380, 150), tinted(1))) << "far inside the white";
  EXPECT_TRUE(isNear(at(200, 150), tinted(0.5), 0.03)) << "half of each at the edge";
  // A Gaussian edge: one standard deviation from it, 84.1 % of the light is there.
  const double deviation = desktops::darkHud::blurRadius / 2;
  EXPECT_TRUE(isNear(at(200 + deviation, 150), tinted(0.841), 0.03));
  EXPECT_TRUE(isNear(at(200 - deviation, 150), tinted(0.159), 0.03));
}

TEST_F(CompositorTest, OnePixelIsTheSameAsInTheWholePicture) {
  cover->contentView().setMaterial(platform::EffectMaterial::darkHud);
  const auto whole = desktop.render();
  for (const int x : {0, 150, 190, 215, 260, 399})
    for (const int y : {0, 149, 299}) {
      const auto index = static_cast<std::size_t>(y) * 400 + static_cast<std::size_t>(x);
      EXPECT_TRUE(isNear(at(x, y), colorOf(whole.pixels.at(index)), 1.1 / 255)) << x << ", " << y;
    }
  EXPECT_EQ(desktop.pixel({400, 10}), std::nullopt);
  EXPECT_EQ(desktop.pixel({-1, 10}), std::nullopt);
}

TEST_F(CompositorTest, ContentsFillTheViewFromTheMiddle) {
  // A wide picture on the screen's 4:3: its outer quarters are cut off.
  auto image = std::make_shared<Image>(Image{8, 3, {}});
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 8; ++column)
      image->pixels.push_back(column < 2 || column > 5 ? 0xffff0000 : column < 4 ? 0xff00ff00 : 0xff0000ff);
  cover->contentView().setContents(image);
  EXPECT_TRUE(isNear(at(60, 150), {0, 1, 0}));
  EXPECT_TRUE(isNear(at(340, 150), {0, 0, 1}));
}

TEST_F(CompositorTest, ContentsCrossFadeWithoutLettingTheBackThrough) {
  auto& view = cover->contentView();
  view.setContents(plainImage(4, 3, 0xff800000));
  view.setContents(plainImage(4, 3, 0xff800000), {1, platform::TimingFunction::linear});
  desktop.advance(0.5);
  ASSERT_TRUE(view.outgoingContents());
  EXPECT_TRUE(isNear(at(320, 150), {0.5, 0, 0})) << "two equal pictures fade into each other unseen";
  view.setContents(nullptr, {1, platform::TimingFunction::linear});
  desktop.advance(0.5);
  EXPECT_TRUE(isNear(at(320, 150), {0.75, 0.5, 0.5}, 0.03)) << "to nothing";
}

TEST_F(CompositorTest, BrokenContentsShowNothing) {
  for (const auto& broken : {Image{100, 100, {1, 2, 3}}, Image{0, 0, {}}}) {
    cover->contentView().setContents(std::make_shared<Image>(broken));
    EXPECT_TRUE(isNear(at(320, 150), {1, 1, 1}));
  }
}

TEST_F(CompositorTest, TheScaleChangesThePixelsButNotTheLook) {
  cover->contentView().setMaterial(platform::EffectMaterial::darkHud);
  const auto before = at(215, 150);
  desktop.screens().change(1, screenFrame, 2);
  const auto picture = desktop.render();
  EXPECT_EQ(picture.width, 800);
  EXPECT_EQ(picture.height, 600);
  EXPECT_TRUE(isNear(at(215, 150), before, 0.02));
}

TEST_F(CompositorTest, AllScreensAreOnePicture) {
  desktop.screens().add({{-100, 50, 100, 200}, 2, "Left", 1});
  const auto picture = desktop.renderAll();
  EXPECT_EQ(picture.width, 500);
  EXPECT_EQ(picture.height, 300);
  EXPECT_EQ(picture.pixels.at(10), 0u) << "no screen above the left one";
  EXPECT_NE(picture.pixels.at(100 * 500 + 10), 0u);
  desktop.screens().set({});
  EXPECT_TRUE(desktop.renderAll().pixels.empty());
  EXPECT_TRUE(desktop.render().pixels.empty());
}

}  // namespace
}  // namespace hushpane::sim

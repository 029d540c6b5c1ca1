#include <gtest/gtest.h>

#include <numeric>

#include "desktops/x11/blur.h"
#include "desktops/x11/image_scale.h"
#include "desktops/x11/overlay_painter.h"
#include "desktops/x11/pixel_rect.h"
#include "desktops/x11/window_kind.h"

namespace hushpane::x11 {
namespace {

platform::Image imageOf(int width, int height, std::vector<std::uint32_t> pixels) {
  return {width, height, std::move(pixels)};
}

TEST(ImageScaleTest, FillsAndCutsOffEvenly) {
  constexpr std::uint32_t left = 0xffff0000, middle = 0xff00ff00, right = 0xff0000ff;
  const auto wide = imageOf(6, 2, {left, left, middle, middle, right, right, left, left, middle, middle, right, right});
  EXPECT_EQ(aspectFilled(wide, 2, 2), (std::vector<std::uint32_t>(4, middle)));
  const auto all = aspectFilled(wide, 6, 2);
  EXPECT_EQ(all, wide.pixels) << "the same size is the same picture";
  const auto tall = imageOf(1, 3, {left, middle, right});
  EXPECT_EQ(aspectFilled(tall, 1, 1), (std::vector<std::uint32_t>{middle}));
}

TEST(ImageScaleTest, KeepsFlatColoursAndAverages) {
  const auto flat = imageOf(7, 5, std::vector<std::uint32_t>(35, 0xff123456));
  for (const auto& [width, height] : {std::pair(3, 2), {7, 5}, {40, 31}, {1, 9}}) {
    const auto scaled = aspectFilled(flat, width, height);
    ASSERT_EQ(scaled.size(), static_cast<std::size_t>(width * height));
    for (const auto pixel : scaled) ASSERT_EQ(pixel, 0xff123456);
  }
  std::vector<std::uint32_t> checks(64 * 64);
  for (int index = 0; index < 64 * 64; ++index) checks[index] = (index % 64 + index / 64) % 2 ? 0xffffffff : 0xff000000;
  for (const auto pixel : aspectFilled(imageOf(64, 64, checks), 8, 8)) ASSERT_NEAR(int(pixel & 0xff), 128, 8);
  EXPECT_EQ(aspectFilled({}, 2, 1), (std::vector<std::uint32_t>{0, 0}));
}

TEST(BlurTest, ChainGetsSmallerToTheRadius) {
  for (const double radius : {1.0, 8.0, 30.0, 200.0}) {
    const auto reductions = blurReductions(radius);
    ASSERT_GE(reductions.size(), 2u);
    EXPECT_EQ(reductions.front(), 2);
    for (std::size_t step = 1; step < reductions.size(); ++step) {
      EXPECT_GT(reductions[step], reductions[step - 1]);
      EXPECT_LE(reductions[step], reductions[step - 1] * 2.5) << "bilinear steps must not skip pixels";
    }
  }
  EXPECT_GT(blurReductions(60).back(), 1.5 * blurReductions(30).back());
}

TEST(PixelRegionTest, HoldsAllThatWasAddedInFewRectangles) {
  PixelRegion region;
  region.add({});
  EXPECT_TRUE(region.isEmpty());
  region.add({0, 0, 100, 100});
  region.add({10, 10, 5, 5});
  EXPECT_EQ(region.rects().size(), 1u);
  for (int index = 0; index < 50; ++index) region.add({index * 20, 200, 5, 5});
  EXPECT_LE(region.rects().size(), 12u);
  EXPECT_EQ(region.bounds(), (PixelRect{0, 0, 985, 205}));
}

TEST(LayerTest, OnlyWindowsThatPeopleWorkInAreOrdinary) {
  const auto layer = [](WindowKind kind, bool isOverrideRedirect = false, bool isAbove = false) {
    return layerOf({kind, isOverrideRedirect, isAbove});
  };
  for (const auto kind : {WindowKind::normal, WindowKind::dialog, WindowKind::utility}) {
    EXPECT_EQ(layer(kind), 0);
    EXPECT_NE(layer(kind, true), 0) << "override-redirect";
    EXPECT_NE(layer(kind, false, true), 0) << "kept above";
  }
  for (const auto kind : {WindowKind::dock, WindowKind::menu, WindowKind::splash}) EXPECT_GT(layer(kind), 0);
  EXPECT_LT(layer(WindowKind::desktop), 0);
}

Layer colorLayer(double alpha, double opacity = 1) {
  return {Layer::Kind::color, {0, 0, 0, alpha}, nullptr, opacity};
}
Layer materialLayer(double opacity = 1) {
  return {Layer::Kind::material, {}, nullptr, opacity};
}

TEST(DrawingNeedsTest, ServerKeepsOnlyWhatThePictureNeeds) {
  const Layer image{Layer::Kind::image, {}, nullptr, 1};
  struct Case {
    const char* name;
    std::vector<Layer> layers;
    double alpha;
    bool isComposited;
    DrawingNeeds needs;
  };
  const Case cases[] = {
      {"picture", {image}, 1, false, {BackdropUse::none, false, false}},
      {"picture, composited", {image}, 1, true, {BackdropUse::none, false, false}},
      {"fading picture", {image}, 0.5, false, {BackdropUse::watch, true, false}},
      {"dim", {colorLayer(0.5)}, 1, false, {BackdropUse::watch, true, false}},
      {"dim, composited", {colorLayer(0.5)}, 1, true, {BackdropUse::keep, false, false}},
      {"black", {colorLayer(1)}, 1, false, {BackdropUse::none, false, false}},
      {"blur", {materialLayer()}, 1, false, {BackdropUse::watch, false, true}},
      {"blur, composited", {materialLayer()}, 1, true, {BackdropUse::watch, false, true}},
      {"blur that comes", {materialLayer(0.5)}, 1, false, {BackdropUse::watch, true, true}},
      {"nothing", {}, 1, false, {BackdropUse::watch, true, false}},
  };
  for (const auto& [name, layers, alpha, isComposited, needs] : cases) {
    OverlayPicture picture;
    picture.layers = layers;
    picture.alpha = alpha;
    picture.isComposited = isComposited;
    EXPECT_EQ(needsOf(picture), needs) << name;
  }
}

}  // namespace
}  // namespace hushpane::x11

#include "desktops/shared/cairo_canvas.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "desktops/shared/painted.h"

namespace hushpane::desktops {
namespace {

using platform::Canvas;
using platform::Color;
using platform::rectanglePath;

constexpr Color white{1, 1, 1, 1};
constexpr Color red{1, 0, 0, 1};
constexpr Color blue{0, 0, 1, 1};
constexpr std::array scales{1.0, 1.25, 1.5, 2.0};
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(CairoCanvasTest, HairlinesAreSharpAndNeighboursMeetWithoutAGapAtEveryScale) {
  for (const double scale : scales)
    for (int y = 1; y < 12; ++y) {
      Painted painted(20, 15, scale);
      painted.draw([y](Canvas& canvas) { canvas.fill(rectanglePath({2, static_cast<double>(y), 10, 1}), white); });
      const auto ink = painted.ink();
      EXPECT_EQ(ink.y, std::round(y * scale)) << scale;
      EXPECT_GE(ink.height, std::floor(scale)) << scale;
      EXPECT_LE(ink.height, std::ceil(scale)) << scale;
      for (const auto pixel : painted.image.pixels) EXPECT_TRUE(pixel == 0 || pixel == 0xffffffff) << scale;
    }
  Painted thin(5, 5);
  thin.draw([](Canvas& canvas) { canvas.fill(rectanglePath({0, 1.3, 5, 0.25}), white); });
  EXPECT_EQ(thin.pixel(2, 1), 0xffffffff) << "thinner than a pixel, and still there";

  for (const double scale : scales) {
    Painted painted(40, 4, scale);
    painted.draw([](Canvas& canvas) {
      for (int x = 0; x < 40; x += 5) canvas.fill(rectanglePath({static_cast<double>(x), 0, 5, 4}), Color{0, 1, 0, 1});
    });
    for (const auto pixel : painted.image.pixels) EXPECT_EQ(pixel, 0xff00ff00) << scale;
  }
}

TEST(CairoCanvasTest, DrawsShapesWithColorsGradientsAndLines) {
  Painted painted(60, 20, 2);
  painted.draw([](Canvas& canvas) {
    canvas.fill(platform::ellipsePath({0, 0, 20, 20}), Color{1, 0, 0, 0.5});
    canvas.fill(rectanglePath({20, 0, 20, 20}), platform::LinearGradient{{20, 0}, {40, 0}, red, blue});
    canvas.stroke(rectanglePath({45, 5, 10, 10}), white, {2});
  });
  EXPECT_EQ(painted.at(10, 10), 0x80800000);
  EXPECT_EQ(painted.at(1, 1), 0u);
  EXPECT_NEAR(painted.at(30, 10) >> 16 & 0xff, 128, 6);
  EXPECT_GT(painted.at(21, 10) & 0xff0000, 0xe00000u);
  EXPECT_EQ(painted.at(45.5, 10), 0xffffffff) << "half of the line lies inside";
  EXPECT_EQ(painted.at(44.2, 10), 0xffffffff) << "and half outside";
  EXPECT_EQ(painted.at(50, 10), 0u);
}

TEST(CairoCanvasTest, ClipsNestWithinAndAroundLayers) {
  Painted painted(30, 30);
  painted.draw([](Canvas& canvas) {
    canvas.clip(rectanglePath({0, 0, 20, 30}));
    canvas.beginLayer({.opacity = 0.5}, {0, 0, 30, 30});
    canvas.clip(platform::ellipsePath({0, 0, 30, 30}));
    canvas.fill(rectanglePath({0, 0, 30, 30}), white);
    canvas.endLayer();
    canvas.restoreClip();
    canvas.fill(rectanglePath({25, 0, 5, 5}), red);
    canvas.restoreClip();
    canvas.endLayer();
  });
  EXPECT_EQ(painted.at(15, 15), 0x80808080);
  EXPECT_EQ(painted.at(1, 1), 0u) << "outside the inner clip";
  EXPECT_EQ(painted.at(22, 15), 0u) << "outside the outer one";
  EXPECT_EQ(painted.at(27, 2), 0xffff0000) << "after both";
}

TEST(CairoCanvasTest, OnlyDamagedPixelsChange) {
  Painted painted(20, 20, 1.5);
  std::ranges::fill(painted.image.pixels, 0xff112233);
  CairoCanvas canvas(painted.image, 1.5, platform::Rect{5, 5, 4, 4});
  canvas.clear();
  EXPECT_EQ(painted.pixel(7, 7), 0u) << "a pixel that is touched is damaged whole";
  EXPECT_EQ(painted.pixel(6, 6), 0xff112233);
  canvas.fill(rectanglePath({0, 0, 20, 20}), white);
  EXPECT_EQ(painted.pixel(7, 13), 0xffffffff);
  EXPECT_EQ(painted.pixel(7, 14), 0xff112233);
}

TEST(CairoCanvasTest, ALayerFadesAsOne) {
  Painted painted(20, 10);
  painted.draw([](Canvas& canvas) {
    canvas.beginLayer({.shadows = {{blue, 0, {10, 0}}}, .opacity = 0.5}, {0, 0, 10, 10});
    canvas.fill(rectanglePath({0, 0, 10, 10}), white);
    canvas.fill(rectanglePath({0, 0, 10, 10}), red);
    canvas.endLayer();
  });
  EXPECT_EQ(painted.at(5, 5), 0x80800000) << "what is covered does not shine through";
  EXPECT_EQ(painted.at(15, 5), 0x80000080) << "the shadow fades, too";
}

TEST(CairoCanvasTest, SaturationMovesColorsTowardsTheirGrey) {
  const auto painted = [](double saturation) {
    return Painted(4, 4)
        .draw([saturation](Canvas& canvas) {
          canvas.beginLayer({.saturation = saturation}, {0, 0, 4, 4});
          canvas.fill(rectanglePath({0, 0, 4, 4}), Color{0, 1, 0, 0.5});
          canvas.endLayer();
        })
        .at(1, 1);
  };
  EXPECT_EQ(painted(0), 0x805c5c5c) << "green is bright";
  EXPECT_EQ(painted(1), 0x80008000);
  EXPECT_LT(painted(0.5) >> 16 & 0xff, 0x40u);
  EXPECT_EQ(painted(3), 0x80008000) << "never more than there is of a colour";
}

TEST(CairoCanvasTest, BlurIsMeasuredInPointsAndReachesBeyondTheBounds) {
  for (const double scale : scales) {
    Painted painted(100, 60, scale);
    painted.draw([](Canvas& canvas) {
      canvas.beginLayer({.blurRadius = 4}, {30, 0, 40, 60});
      canvas.fill(rectanglePath({30, 0, 40, 60}), white);
      canvas.endLayer();
    });
    EXPECT_NEAR(painted.alphaAt(30, 30), 128, 16) << scale;
    EXPECT_NEAR(painted.alphaAt(26, 30), 255 * 0.16, 14) << scale << ": one deviation away";
    EXPECT_NEAR(painted.alphaAt(22, 30), 255 * 0.023, 5) << scale << ": two";
    EXPECT_EQ(painted.alphaAt(10, 30), 0) << scale;
    EXPECT_EQ(painted.alphaAt(50, 30), 255) << scale;
  }
}

void drawCard(Canvas& canvas, const platform::Rect& rect, std::vector<platform::Shadow> shadows) {
  canvas.beginLayer({.shadows = std::move(shadows)}, rect);
  canvas.fill(rectanglePath(rect), white);
  canvas.endLayer();
}

TEST(CairoCanvasTest, ShadowsLieBehindMovedBlurredAndInTheirColor) {
  for (const double scale : scales) {
    Painted painted(100, 100, scale);
    painted.draw([](Canvas& canvas) {
      drawCard(canvas, {30, 30, 40, 40}, {{{0, 0, 1, 0.5}, 3, {0, 12}}, {{1, 0, 0, 0.8}, 0, {-16, 0}}});
    });
    EXPECT_EQ(painted.at(50, 50), 0xffffffff) << "beneath the card";
    EXPECT_NEAR(painted.alphaAt(50, 76), 127, 6) << scale;
    EXPECT_NEAR(painted.alphaAt(50, 82), 64, 10) << scale << ": half of it at its edge";
    EXPECT_EQ(painted.at(50, 76) & 0xff0000, 0u) << scale;
    EXPECT_EQ(painted.at(50, 20), 0u) << "it fell downwards";
    EXPECT_EQ(painted.at(20, 50), 0xcccc0000) << scale << ": sharp, to the left";
    EXPECT_EQ(painted.at(95, 50), 0u) << scale;
  }
  Painted painted(40, 20);
  painted.draw([](Canvas& canvas) { drawCard(canvas, {0, 0, 10, 20}, {{red, 0, {10, 0}}, {blue, 0, {15, 0}}}); });
  EXPECT_EQ(painted.at(17, 10), 0xffff0000) << "the earlier one covers the later one";
  EXPECT_EQ(painted.at(22, 10), 0xff0000ff);
}

TEST(CairoCanvasTest, AClippedPartOfALayerLooksLikeThatPartOfTheWhole) {
  const auto drawing = [](Canvas& canvas) {
    drawCard(canvas, {25, 25, 30, 30}, {{{0, 0, 0, 0.7}, 5, {20, 4}}, {{0, 1, 0, 0.4}, 1.5, {-9, 0}}});
    canvas.beginLayer({.blurRadius = 3}, {10, 60, 40, 10});
    canvas.fill(rectanglePath({10, 60, 40, 10}), red);
    canvas.endLayer();
  };
  const auto whole = Painted(90, 90, 2).draw(drawing);
  for (const platform::Rect& damage : {platform::Rect{60, 20, 10, 40}, {0, 40, 18, 5}, {12, 52, 9, 6}}) {
    Painted part(90, 90, 2);
    CairoCanvas canvas(part.image, 2, damage);
    drawing(canvas);
    for (double y = damage.y; y < damage.bottom(); y += 0.5)
      for (double x = damage.x; x < damage.right(); x += 0.5)
        EXPECT_NEAR(part.alphaAt(x, y), whole.alphaAt(x, y), 3) << x << ", " << y;
    EXPECT_EQ(part.at(40, 30), 0u);
  }
}

// Four columns: red, green, green, blue.
platform::Image columns() {
  platform::Image image{4, 2, {}};
  for (int row = 0; row < 2; ++row)
    for (const std::uint32_t pixel : {0xffff0000, 0xff00ff00, 0xff00ff00, 0xff0000ff}) image.pixels.push_back(pixel);
  return image;
}

TEST(CairoCanvasTest, ImagesAndTemplatesFillTheirRectangleFromTheirMiddle) {
  for (const double scale : scales) {
    Painted painted(40, 40, scale);
    painted.draw([](Canvas& canvas) { canvas.drawImage(columns(), {10, 10, 20, 20}); });
    EXPECT_EQ(painted.at(20, 20), 0xff00ff00) << scale;
    EXPECT_EQ(painted.at(9, 20), 0u) << scale;
    EXPECT_EQ(painted.at(31, 20), 0u) << scale;
    EXPECT_EQ(painted.at(11, 11) >> 24, 0xffu) << scale << ": to the corners";
  }
  const auto exact = Painted(4, 2).draw([](Canvas& canvas) { canvas.drawImage(columns(), {0, 0, 4, 2}); });
  EXPECT_EQ(exact.image.pixels, columns().pixels) << "pixel by pixel";
  const auto colored = Painted(20, 10).draw([](Canvas& canvas) {
    canvas.drawTemplate({2, 1, {0xff123456, 0x00000000}}, {0, 0, 20, 10}, Color{1, 0, 0, 0.5});
  });
  EXPECT_EQ(colored.at(2, 5), 0x80800000) << "a template takes the colour and keeps the shape";
  EXPECT_EQ(colored.at(18, 5), 0u);
}

TEST(CairoCanvasTest, DrawingsWithoutFiniteNumbersAreLeftOut) {
  const double bad = std::nan("");
  Painted painted(10, 10);
  painted.draw([&](Canvas& canvas) {
    for (const double number : {bad, infinity, -infinity}) {
      canvas.fill(rectanglePath({number, 0, 10, 10}), white);
      canvas.stroke(rectanglePath({0, 0, 10, 10}), white, {number});
      canvas.drawImage(columns(), {0, 0, number, 10});
      canvas.beginLayer({.blurRadius = number, .shadows = {{red, number, {number, 0}}}}, {number, 0, 5, 5});
      canvas.endLayer();
      canvas.clip(rectanglePath({number, 0, 10, 10}));
      canvas.fill(rectanglePath({0, 0, 10, 10}), white);
      canvas.restoreClip();
    }
    canvas.drawImage({3, 3, {1, 2}}, {0, 0, 10, 10});
    canvas.beginLayer({.opacity = 0}, {0, 0, 10, 10});
    canvas.fill(rectanglePath({0, 0, 10, 10}), white);
    canvas.endLayer();
    canvas.restoreClip();
    canvas.endLayer();
  });
  for (const auto pixel : painted.image.pixels) EXPECT_EQ(pixel, 0u);
  painted.draw([&](Canvas& canvas) { canvas.fill(rectanglePath({-1e300, -1e300, 2e300, 2e300}), white); });
  EXPECT_EQ(painted.at(5, 5), 0xffffffff) << "and the canvas still draws";

  platform::Image nothing;
  CairoCanvas canvas(nothing, bad);
  canvas.clear();
  canvas.fill(rectanglePath({0, 0, 10, 10}), white);
}

}  // namespace
}  // namespace hushpane::desktops

#include "declarative/symbol.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

namespace hushpane::declarative {
namespace {

using platform::Font;
using platform::FontWeight;

constexpr std::array names{"macwindow.on.rectangle",
                           "rectangle.stack",
                           "rectangle.on.rectangle",
                           "circle",
                           "plus",
                           "minus",
                           "gearshape",
                           "chevron.left",
                           "chevron.down",
                           "checkmark"};
constexpr std::array weights{FontWeight::ultraLight, FontWeight::light,    FontWeight::regular,
                             FontWeight::medium,     FontWeight::semibold, FontWeight::bold};

platform::Rect inkOf(const SymbolDrawing& drawing) {
  double left = 1e9, top = 1e9, right = -1e9, bottom = -1e9;
  for (const auto& part : drawing.parts) {
    const auto bounds = part.path.controlBounds();
    const double around = part.stroke ? part.stroke->width / 2 : 0;
    left = std::min(left, bounds.x - around);
    top = std::min(top, bounds.y - around);
    right = std::max(right, bounds.right() + around);
    bottom = std::max(bottom, bounds.bottom() + around);
  }
  return {left, top, right - left, bottom - top};
}

TEST(SymbolTest, StandsInTheMiddleOfALineWithLinesThatGrowWithTheWeight) {
  for (const auto* name : names)
    for (const auto variant : {SymbolVariant::plain, SymbolVariant::filled})
      for (const double size : {9.0, 13.0, 18.0}) {
        double last = 0;
        for (const auto weight : weights) {
          const auto drawing = drawSymbol(name, {size, weight}, variant);
          ASSERT_TRUE(drawing) << name;
          const auto ink = inkOf(*drawing);
          EXPECT_NEAR(ink.x, 0, 0.04 * size) << name;
          EXPECT_NEAR(ink.right(), drawing->size.width, 0.04 * size) << name;
          EXPECT_NEAR(ink.y, drawing->size.height - ink.bottom(), 0.08 * size) << name;
          EXPECT_EQ(drawing->size.height, std::ceil(1.2 * size)) << name << " is as high as a line of its font";
          EXPECT_LT(ink.height, 1.15 * size) << name;
          EXPECT_LT(drawing->size.width, 1.4 * size) << name;
          if (variant == SymbolVariant::filled) continue;
          const auto& line = drawing->parts.back().stroke;
          ASSERT_TRUE(line) << name;
          EXPECT_GT(line->width, std::exchange(last, line->width)) << name;
          EXPECT_LT(line->width, 0.15 * size) << name;
        }
      }
}

TEST(SymbolTest, PicturesAreAsHighAsCapitalsWithAnAreaInFrontWhenFilledAndFainterBehind) {
  constexpr double capitals = 0.727;  // of the interface font
  for (const auto* name :
       {"macwindow.on.rectangle", "rectangle.stack", "rectangle.on.rectangle", "circle", "gearshape"}) {
    SCOPED_TRACE(name);
    for (const auto variant : {SymbolVariant::plain, SymbolVariant::filled}) {
      const auto drawing = *drawSymbol(name, {13}, variant);
      const auto& parts = drawing.parts;
      EXPECT_GT(inkOf(drawing).height, 13 * capitals);
      EXPECT_EQ(parts.back().stroke.has_value(), variant == SymbolVariant::plain);
      EXPECT_EQ(parts.back().opacity, 1);
      EXPECT_TRUE(std::ranges::is_sorted(parts, {}, &SymbolPart::opacity));
      if (std::string_view(name).find("rectangle") != std::string_view::npos) {
        EXPECT_LT(parts.front().opacity, 0.7);
      }
    }
  }
}

TEST(SymbolTest, UnknownNamesAndSizesHaveADefinedResult) {
  EXPECT_FALSE(drawSymbol("", {13}, SymbolVariant::plain));
  EXPECT_FALSE(drawSymbol("circle.of.friends", {13}, SymbolVariant::plain));
  for (const double size : {0.0, -3.0, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(drawSymbol("gearshape", {size}, SymbolVariant::plain)->size, platform::Size{});
}

}  // namespace
}  // namespace hushpane::declarative

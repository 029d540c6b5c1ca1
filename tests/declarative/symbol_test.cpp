#include "declarative/symbol.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

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

bool hasStroke(const SymbolDrawing& drawing) {
  return std::ranges::any_of(drawing.parts, [](const auto& part) { return part.stroke.has_value(); });
}

TEST(SymbolTest, StandsInTheMiddleOfALine) {
  for (const auto* name : names)
    for (const auto weight : weights)
      for (const auto variant : {SymbolVariant::plain, SymbolVariant::filled})
        for (const double size : {9.0, 13.0, 18.0}) {
          const auto drawing = drawSymbol(name, {size, weight}, variant);
          ASSERT_TRUE(drawing) << name;
          const auto ink = inkOf(*drawing);
          EXPECT_NEAR(ink.x, 0, 0.04 * size) << name;
          EXPECT_NEAR(ink.right(), drawing->size.width, 0.04 * size) << name;
          EXPECT_NEAR(ink.y, drawing->size.height - ink.bottom(), 0.08 * size) << name;
          EXPECT_EQ(drawing->size.height, std::ceil(1.2 * size)) << name << " is as high as a line of its font";
          EXPECT_LT(ink.height, 1.15 * size) << name;
          EXPECT_LT(drawing->size.width, 1.4 * size) << name;
        }
}

TEST(SymbolTest, IsSizedLikeTheCapitalsBesideIt) {
  constexpr double capitals = 0.727;  // of the interface font
  for (const auto* name :
       {"macwindow.on.rectangle", "rectangle.stack", "rectangle.on.rectangle", "circle", "gearshape"})
    EXPECT_GT(inkOf(*drawSymbol(name, {13}, SymbolVariant::plain)).height, 13 * capitals) << name;
}

TEST(SymbolTest, LinesGrowWithTheWeight) {
  for (const auto* name : names) {
    double last = 0;
    for (const auto weight : weights) {
      const auto drawing = drawSymbol(name, {13, weight}, SymbolVariant::plain);
      ASSERT_TRUE(hasStroke(*drawing)) << name;
      const double width = drawing->parts.back().stroke->width;
      EXPECT_GT(width, last) << name;
      last = width;
    }
    EXPECT_LT(last, 0.15 * 13) << name;
  }
}

TEST(SymbolTest, FilledSymbolsHaveAnAreaInFront) {
  for (const auto* name :
       {"macwindow.on.rectangle", "rectangle.stack", "rectangle.on.rectangle", "circle", "gearshape"}) {
    EXPECT_FALSE(drawSymbol(name, {13}, SymbolVariant::filled)->parts.back().stroke) << name;
    EXPECT_TRUE(drawSymbol(name, {13}, SymbolVariant::plain)->parts.back().stroke) << name;
  }
}

TEST(SymbolTest, WhatLiesBehindIsFainter) {
  for (const auto* name : {"macwindow.on.rectangle", "rectangle.stack", "rectangle.on.rectangle"})
    for (const auto variant : {SymbolVariant::plain, SymbolVariant::filled}) {
      const auto parts = drawSymbol(name, {13}, variant)->parts;
      EXPECT_LT(parts.front().opacity, 0.7) << name;
      EXPECT_EQ(parts.back().opacity, 1) << name;
      EXPECT_TRUE(std::ranges::is_sorted(parts, {}, &SymbolPart::opacity)) << name;
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

#include "desktops/shared/template_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "ui/menu/menu_bar_icon.h"

namespace hushpane::desktops::tests {
namespace {

// Of a channel from 0 to 1.
double luminance(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double contrast(double left, double right) {
  const auto [dark, light] = std::minmax({luminance(left), luminance(right)});
  return (light + 0.05) / (dark + 0.05);
}

// How much the picture stands out on that grey, pixel by pixel.
std::vector<double> contrasts(const platform::Image& picture, double ground) {
  std::vector<double> values;
  for (const auto pixel : picture.pixels)
    values.push_back(contrast(ground, (pixel & 0xff) / 255.0 + ground * (1 - (pixel >> 24) / 255.0)));
  return values;
}

platform::Image icon(int side, const platform::Color& ink, bool isActive) {
  return rimmedTemplatePicture(
      {menuBarIconSize, [isActive](platform::Canvas& canvas,
                                   double pixelsPerPoint) { drawMenuBarIcon(canvas, pixelsPerPoint, isActive); }},
      side, ink);
}

// For text, 3 to 1 is asked of large letters.
TEST(RimmedTemplatePicture, StandsOutOnDarkAndLightAndBetween) {
  constexpr double enough = 3;
  for (const int side : {16, 22, 24, 32, 48}) {
    for (const auto& ink : {inkOnDark, inkOnLight}) {
      for (const double ground : {0.0, 0.12, 0.5, 0.93, 1.0}) {
        for (const bool isActive : {false, true}) {
          SCOPED_TRACE(testing::Message() << side << (ink == inkOnDark ? " light" : " dark") << " on " << ground
                                          << (isActive ? ", active" : ""));
          const auto picture = icon(side, ink, isActive);
          const auto values = contrasts(picture, ground);
          const auto at = [&](int column, int row) { return values[std::size_t(row * side + column)]; };
          // Each edge of the body, as a line through the middle of the icon crosses it.
          const auto crossing = [&](auto valueAt, int from, int to) {
            double most = 0;
            for (int index = from; index < to; ++index) most = std::max(most, valueAt(index));
            return most;
          };
          const auto across = [&](int column) { return at(column, side / 2); };
          const auto down = [&](int row) { return at(side / 3, row); };
          EXPECT_GE(crossing(across, 0, side / 4), enough) << "left";
          EXPECT_GE(crossing(across, side * 3 / 4, side), enough) << "right";
          EXPECT_GE(crossing(down, 0, side / 2), enough) << "top";
          EXPECT_GE(crossing(down, side / 2, side), enough) << "bottom";
          EXPECT_LT(at(side * 2 / 5, side / 2), 1.2) << "the ground shows through the body";
          EXPECT_LT(at(0, 0), 1.2);
        }
      }
    }
  }
}

TEST(RimmedTemplatePicture, TellsItsStatesApartOnEveryGround) {
  for (const auto& ink : {inkOnDark, inkOnLight}) {
    for (const double ground : {0.0, 0.5, 1.0}) {
      SCOPED_TRACE(testing::Message() << (ink == inkOnDark ? "light on " : "dark on ") << ground);
      const auto active = icon(22, ink, true), inactive = icon(22, ink, false);
      int different = 0;
      for (std::size_t index = 0; index < active.pixels.size(); ++index) {
        const auto shown = [&](std::uint32_t pixel) {
          return (pixel & 0xff) / 255.0 + ground * (1 - (pixel >> 24) / 255.0);
        };
        different += contrast(shown(active.pixels[index]), shown(inactive.pixels[index])) >= 1.5;
      }
      EXPECT_GE(different, 20);
    }
  }
}

TEST(RimmedTemplatePicture, FitsAnySquare) {
  for (const int side : {-1, 0, 1, 2, 3, 5}) {
    const auto picture = icon(side, inkOnDark, true);
    EXPECT_EQ(picture.pixels.size(), std::size_t(std::max(side, 0) * std::max(side, 0))) << side;
  }
  EXPECT_EQ(rimmedTemplatePicture({}, 22, inkOnDark).pixels, std::vector<std::uint32_t>(22 * 22));
}

}  // namespace
}  // namespace hushpane::desktops::tests

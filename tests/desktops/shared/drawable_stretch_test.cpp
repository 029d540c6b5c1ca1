#include "desktops/shared/drawable_stretch.h"

#include <gtest/gtest.h>

namespace hushpane::desktops {
namespace {

TEST(DrawableStretchTest, TheCentresOfTheOutermostPixelsMeet) {
  for (const auto& [samples, length] : {std::pair(64, 1920.0), {64, 300.0}, {2, 7.0}, {300, 300.0}}) {
    const auto stretch = drawableStretch(samples, length, length);
    EXPECT_NEAR(stretch.scale * 0.5 + stretch.offset, 0.5, 1e-9);
    EXPECT_NEAR(stretch.scale * (length - 0.5) + stretch.offset, samples - 0.5, 1e-9);
    // A target of fewer pixels reads each place of the screen where the whole one does.
    const auto quarter = drawableStretch(samples, length, length / 4);
    EXPECT_NEAR(quarter.scale * 1.25 + quarter.offset, stretch.scale * 5 + stretch.offset, 1e-9);
  }
  for (const auto& [samples, length] : {std::pair(1, 500.0), {1, 1.0}, {64, 1.0}}) {
    const auto stretch = drawableStretch(samples, length, length);
    EXPECT_EQ(stretch.scale * 0.5 + stretch.offset, 0.5) << "one pixel everywhere";
    EXPECT_EQ(stretch.scale, 0);
  }
}

}  // namespace
}  // namespace hushpane::desktops

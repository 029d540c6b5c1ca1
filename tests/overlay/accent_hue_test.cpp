#include "overlay/accent_hue.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>

namespace hushpane::tests {
namespace {

constexpr std::size_t pixelCount = std::size_t{accentHueSide} * accentHueSide;

// A picture of that mean, with its channels spread over the pixels.
platform::Image pictureOf(std::array<double, 3> mean) {
  platform::Image picture{accentHueSide, accentHueSide, std::vector<std::uint32_t>(pixelCount, 0xff000000)};
  for (std::size_t channel = 0; channel < mean.size(); ++channel) {
    double owed = 0;
    for (auto& pixel : picture.pixels) {
      owed += 255 * mean[channel];
      const double paid = std::round(owed);
      owed -= paid;
      pixel |= static_cast<std::uint32_t>(paid) << (16 - 8 * channel);
    }
  }
  return picture;
}

TEST(AccentHue, IsThatOfTheMeanColour) {
  struct Case {
    const char* what;
    std::array<double, 3> mean;
    float hue;
  };
  for (const auto& [what, mean, hue] :
       {Case{"a muted blue, boosted to 0.325, 0.395, 0.675", {0.45, 0.47, 0.55}, 0.6333f},
        Case{"green", {0.2, 0.6, 0.2}, 1.0f / 3}, Case{"yellow", {0.5, 0.5, 0.3}, 1.0f / 6},
        Case{"clipped at 0 and 1: it would be 0.104 unclipped", {0.9, 0.6, 0.1}, 0.85f / 6},
        Case{"both lower channels clipped at 0: pure red instead of 0.0167", {0.5, 0.05, 0.0}, 0},
        Case{"the far side of red, just below 1", {0.6, 0.5, 0.51}, 1 - 0.1f / 6}})
    EXPECT_NEAR(accentHue(pictureOf(mean)).value_or(-1), hue, 0.0005f) << what;
}

TEST(AccentHue, GreyAndWhatIsNearlyTransparentCarryNone) {
  EXPECT_FALSE(accentHue(pictureOf({0.5, 0.5, 0.5})));
  EXPECT_FALSE(accentHue(pictureOf({0.5, 0.5, 0.54})));
  EXPECT_TRUE(accentHue(pictureOf({0.5, 0.5, 0.54001})));
  EXPECT_FALSE(accentHue(platform::Image{}));
  auto picture = pictureOf({0.2, 0.6, 0.2});
  for (std::size_t index = 0; index < pixelCount - 100; ++index) picture.pixels[index] = 0;
  EXPECT_FALSE(accentHue(picture)) << "what is transparent counts as black";
}

TEST(AccentHue, StaysBelowOne) {
  platform::Image picture{1000, 1000, std::vector<std::uint32_t>(1'000'000, 0xffa04040)};
  picture.pixels.front() = 0xffa04041;
  EXPECT_EQ(accentHue(picture), 0.0f) << "nearer to red than a float can tell";
}

}  // namespace
}  // namespace hushpane::tests

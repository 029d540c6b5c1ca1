#include "desktops/shared/gaussian_blur.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <vector>

namespace hushpane::desktops {
namespace {

struct Picture {
  int width;
  int height;
  int channels;
  std::vector<std::uint8_t> bytes;

  Picture(int w, int h, int bytesPerPixel)
      : width(w), height(h), channels(bytesPerPixel), bytes(static_cast<std::size_t>(w * h * bytesPerPixel)) {}
  std::uint8_t& at(int x, int y, int channel = 0) {
    return bytes[static_cast<std::size_t>((y * width + x) * channels + channel)];
  }
  void blur(double deviation) {
    gaussianBlur({bytes.data(), width, height, static_cast<std::ptrdiff_t>(width) * channels, channels}, deviation);
  }
};

// How much of an edge at 0 shows at that place behind a Gaussian.
double edgeAt(double place, double deviation) {
  return std::erfc(-place / deviation / std::numbers::sqrt2) / 2;
}

TEST(GaussianBlurTest, AnEdgeFallsOffAsBehindAGaussian) {
  for (const double deviation : {1.0, 2.2, 4.0, 7.0, 15.0, 28.0}) {
    Picture picture(240, 9, 1);
    Picture turned(9, 240, 1);
    for (int along = 120; along < 240; ++along)
      for (int across = 0; across < 9; ++across) picture.at(along, across) = turned.at(across, along) = 255;
    picture.blur(deviation);
    turned.blur(deviation);
    for (int x = 0; x < 240; ++x) {
      const double expected = 255 * edgeAt(x + 0.5 - 120, std::hypot(deviation, 0.29));
      EXPECT_NEAR(picture.at(x, 4), expected, 6) << deviation << " at " << x;
      EXPECT_NEAR(turned.at(4, x), expected, 6) << deviation << " at " << x;
    }
  }
}

TEST(GaussianBlurTest, KeepsPlainPicturesAndChannelsApart) {
  for (const double deviation : {0.0, 0.04, 0.5, 3.0, 40.0, 5000.0}) {
    Picture picture(37, 23, 4);
    for (int y = 0; y < 23; ++y)
      for (int x = 0; x < 37; ++x)
        for (int channel = 0; channel < 4; ++channel)
          picture.at(x, y, channel) = static_cast<std::uint8_t>(85 * channel);
    picture.blur(deviation);
    for (int channel = 0; channel < 4; ++channel)
      for (const auto& [x, y] : {std::pair{0, 0}, {36, 22}, {18, 11}, {36, 0}})
        EXPECT_NEAR(picture.at(x, y, channel), 85 * channel, 1) << deviation;
  }
}

TEST(GaussianBlurTest, NothingShowsBeyondItsReach) {
  for (const double deviation : {0.3, 1.0, 5.0, 20.0}) {
    const int reach = blurReach(deviation);
    Picture picture(2 * reach + 21, 5, 1);
    for (int x = reach + 5; x < reach + 15; ++x)
      for (int y = 0; y < 5; ++y) picture.at(x, y) = 255;
    picture.blur(deviation);
    EXPECT_EQ(picture.at(4, 2), 0) << deviation;
    EXPECT_GT(picture.at(reach + 10, 2), 40) << deviation;
  }
  EXPECT_EQ(blurReach(0), 0);
}

TEST(GaussianBlurTest, PicturesWithoutRoomAreLeftAlone) {
  Picture dot(1, 1, 4);
  dot.at(0, 0, 2) = 200;
  dot.blur(9);
  EXPECT_EQ(dot.at(0, 0, 2), 200);
  gaussianBlur({nullptr, 0, 0, 0, 1}, 5);
  gaussianBlur({dot.bytes.data(), 1, 1, 4, 4}, std::nan(""));
  EXPECT_EQ(dot.at(0, 0, 2), 200);
}

}  // namespace
}  // namespace hushpane::desktops

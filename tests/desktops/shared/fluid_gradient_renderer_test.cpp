#include "desktops/shared/fluid_gradient_renderer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <utility>

#include "desktops/shared/fluid_gradient_formula.h"

namespace hushpane::desktops {
namespace {

using platform::Color;
using platform::FluidUniforms;
using platform::Image;
using Detail = FluidGradientRenderer::Detail;

// Alpha, red, green, blue in steps of 8 bits, premultiplied.
using Channels = std::array<double, 4>;

struct Size {
  int width, height;
};

Channels formulaAt(const FluidUniforms& uniforms, Size drawable, int x, int y) {
  const auto color = fluidGradient(uniforms, {(x + 0.5) / drawable.width, 1 - (y + 0.5) / drawable.height});
  const double alpha = color.alpha * 255;
  return {alpha, color.red * alpha, color.green * alpha, color.blue * alpha};
}

Channels pixelOf(const Image& image, int x, int y) {
  x = std::clamp(x, 0, image.width - 1);
  y = std::clamp(y, 0, image.height - 1);
  const auto pixel = image.pixels[static_cast<std::size_t>(y * image.width + x)];
  const auto byte = [&](int shift) { return static_cast<double>(pixel >> shift & 0xff); };
  return {byte(24), byte(16), byte(8), byte(0)};
}

double largestDifference(const Channels& a, const Channels& b) {
  double largest = 0;
  for (std::size_t i = 0; i < a.size(); ++i) largest = std::max(largest, std::abs(a[i] - b[i]));
  return largest;
}

Channels rounded(Channels channels) {
  for (auto& channel : channels) channel = std::floor(channel + 0.5);
  return channels;
}

// Every pixel of a small drawable; of a large one its corners and some hundred others.
template <typename Check>
void visit(Size drawable, const Check& check) {
  const auto stride = [](int length) { return length < 100 ? 1 : length / 23; };
  for (int y = 0; y < drawable.height; y += stride(drawable.height))
    for (int x = 0; x < drawable.width; x += stride(drawable.width)) {
      check(x, y);
      check(drawable.width - 1 - x, drawable.height - 1 - y);
    }
}

constexpr FluidUniforms moments[] = {
    {0, 0, 0.65F},          {1.5F, 0.6F, 0.65F}, {333.3F, 0.72F, 0.65F},       {4321, 0.9F, 1},
    {86400, 0.999F, 0.65F}, {1e6F, 0.35F, 0.5F}, {31'415'926, 0.1234F, 0.65F}, {57, 0.5F, 0.65F},
    {210, 0.25F, 0.65F}};

constexpr Size sizes[] = {{1, 1}, {1, 300}, {300, 1}, {7, 5}, {64, 65}, {63, 500}, {1919, 1079}, {1920, 1200}};

// Linear interpolation between the pixels of a reduced frame whose corner pixels are the drawable's.
class Stretched {
 public:
  Stretched(const Image& frame, Size drawable)
      : frame_(frame), across_(scale(frame.width, drawable.width)), down_(scale(frame.height, drawable.height)) {}

  // Exactly, then to the nearest.
  Channels byRounding(int x, int y) const {
    return rounded(blend(Split::exactly(x * across_), Split::exactly(y * down_)));
  }

  // As software servers do: 16.16 places, weights of 7 bits, and the fraction cut off.
  Channels byCutting(int x, int y) const {
    auto channels = blend(Split::fixed(across_, x), Split::fixed(down_, y));
    for (auto& channel : channels) channel = std::floor(channel);
    return channels;
  }

 private:
  struct Split {
    int pixel;
    double weight;  // of the pixel after it
    static Split exactly(double place) { return {static_cast<int>(place), place - std::floor(place)}; }
    static Split fixed(double scale, int pixel) {
      const auto place = std::lround(scale * 65536) * pixel;
      return {static_cast<int>(place >> 16), static_cast<double>(place >> 9 & 127) / 128};
    }
  };

  static double scale(int from, int to) { return to > 1 ? static_cast<double>(from - 1) / (to - 1) : 0; }

  Channels blend(Split x, Split y) const {
    Channels result{};
    for (const auto& [dx, dy, weight] : {std::tuple{0, 0, (1 - x.weight) * (1 - y.weight)},
                                         {1, 0, x.weight * (1 - y.weight)},
                                         {0, 1, (1 - x.weight) * y.weight},
                                         {1, 1, x.weight * y.weight}}) {
      const auto pixel = pixelOf(frame_, x.pixel + dx, y.pixel + dy);
      for (std::size_t i = 0; i < result.size(); ++i) result[i] += pixel[i] * weight;
    }
    return result;
  }

  const Image& frame_;
  double across_, down_;
};

class FluidGradientRendererTest : public testing::TestWithParam<const FluidKernels*> {};

TEST_P(FluidGradientRendererTest, AFullFrameIsTheFormula) {
  FluidGradientRenderer renderer(Detail::full, *GetParam());
  Image frame;
  for (const auto& drawable : sizes)
    for (const auto& uniforms : moments) {
      renderer.draw(uniforms, drawable.width, drawable.height, frame);
      ASSERT_EQ(std::pair(frame.width, frame.height), std::pair(drawable.width, drawable.height));
      ASSERT_EQ(frame.pixels.size(), static_cast<std::size_t>(drawable.width * drawable.height));
      double worst = 0;
      visit(drawable, [&](int x, int y) {
        worst = std::max(worst, largestDifference(pixelOf(frame, x, y), formulaAt(uniforms, drawable, x, y)));
      });
      EXPECT_LT(worst, 0.6) << drawable.width << "x" << drawable.height << " after " << uniforms.time;
    }
}

TEST_P(FluidGradientRendererTest, AReducedFrameShowsTheSameWhenItIsStretched) {
  FluidGradientRenderer renderer(Detail::reduced, *GetParam());
  Image frame;
  for (const auto& drawable : sizes)
    for (const auto& uniforms : moments) {
      renderer.draw(uniforms, drawable.width, drawable.height, frame);
      ASSERT_LE(frame.width, std::min(64, drawable.width));
      ASSERT_LE(frame.height, std::min(64, drawable.height));
      const Stretched shown(frame, drawable);
      double worst = 0, worstStep = 0;
      visit(drawable, [&](int x, int y) {
        const auto exact = formulaAt(uniforms, drawable, x, y);
        for (const auto& pixel : {shown.byRounding(x, y), shown.byCutting(x, y)}) {
          worst = std::max(worst, largestDifference(pixel, exact));
          worstStep = std::max(worstStep, largestDifference(pixel, rounded(exact)));
        }
      });
      EXPECT_LE(worstStep, 1) << drawable.width << "x" << drawable.height << " after " << uniforms.time;
      EXPECT_LT(worst, 1.35) << drawable.width << "x" << drawable.height << " after " << uniforms.time;
    }
}

INSTANTIATE_TEST_SUITE_P(Processors, FluidGradientRendererTest, testing::Values(&baselineKernels, &bestKernels()),
                         [](const auto& info) { return info.index == 0 ? "Baseline" : "Best"; });

TEST(FluidGradientMemoryTest, FramesOfOneSizeUseTheSameMemory) {
  for (const auto detail : {Detail::reduced, Detail::full}) {
    FluidGradientRenderer renderer(detail);
    Image frame;
    renderer.draw(moments[0], 640, 400, frame);
    const auto* memory = frame.pixels.data();
    const auto first = frame.pixels;
    renderer.draw(moments[1], 640, 400, frame);
    EXPECT_NE(frame.pixels, first);
    renderer.draw(moments[0], 30, 20, frame);
    renderer.draw(moments[0], 640, 400, frame);
    EXPECT_EQ(frame.pixels, first);
    EXPECT_EQ(frame.pixels.data(), memory);
  }
}

void expectNear(const Color& color, const Color& expected) {
  EXPECT_NEAR(color.red, expected.red, 1e-6);
  EXPECT_NEAR(color.green, expected.green, 1e-6);
  EXPECT_NEAR(color.blue, expected.blue, 1e-6);
  EXPECT_NEAR(color.alpha, expected.alpha, 1e-6);
}

TEST(FluidGradientFormulaTest, KnownPlacesHaveTheirColors) {
  // All waves at rest: half of each colour.
  expectNear(fluidGradient({0, 0, 0.65F}, {0, 0}),
             {(0.95 + 0.3185) / 2, (0.285 + 0.65) / 2, (0.285 + 0.1625) / 2, 0.575 * 0.725});
  // Worked out apart from the program.
  expectNear(fluidGradient({100, 0.6F, 0.65F}, {0.25, 0.75}), {0.60862470, 0.20653919, 0.56298032, 0.58947795});
  expectNear(fluidGradient({20, 0.9F, 0.65F}, {0.9, 0.3}), {0.63481105, 0.62436273, 0.19912969, 0.56912308});
  // Beyond either end of the turn.
  expectNear(fluidGradient({1905, 0.3F, 0.65F}, {0.25, 0.5}), {0.41799995, 0.95000000, 0.28500000, 0.48281250});
  expectNear(fluidGradient({2631, 0.3F, 0.65F}, {0.5, 0.5}), {0.16250000, 0.41599997, 0.65000000, 0.64999998});
  // After days.
  expectNear(fluidGradient({700'003, 0.15F, 0.8F}, {0.7, 0.6}), {0.56097296, 0.76815041, 0.36416392, 0.63037526});
}

}  // namespace
}  // namespace hushpane::desktops

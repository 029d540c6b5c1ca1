#include "desktops/shared/fluid_gradient_kernels.h"

#include <cmath>

namespace hushpane::desktops {

namespace {

// Written once and compiled for several processors: each body is inlined into a function per processor. The loops are
// plain so that the compiler makes vector instructions of them.
#define HUSHPANE_KERNEL [[gnu::always_inline]] inline

// Without comparisons, which keep g++ from vectorising.
HUSHPANE_KERNEL float clampedToUnit(float value) {
  return 0.5F * (std::fabs(value) - std::fabs(value - 1) + 1);
}

HUSHPANE_KERNEL std::uint32_t fixedPoint(float value) {
  return static_cast<std::uint32_t>(static_cast<std::int32_t>(value));
}

HUSHPANE_KERNEL void evaluateRow(const FluidColumns& columns, const FluidRow& row, const FluidTint& tint,
                                 std::size_t width, FluidWords& words) {
  static_assert(fluidWaves.size() == 4, "the loop below names every wave");
  const float* __restrict const sines0 = columns.sines[0].data();
  const float* __restrict const sines1 = columns.sines[1].data();
  const float* __restrict const sines2 = columns.sines[2].data();
  const float* __restrict const sines3 = columns.sines[3].data();
  const float* __restrict const cosines0 = columns.cosines[0].data();
  const float* __restrict const cosines1 = columns.cosines[1].data();
  const float* __restrict const cosines2 = columns.cosines[2].data();
  const float* __restrict const cosines3 = columns.cosines[3].data();
  const float* __restrict const vignettes = columns.vignette.data();
  std::uint32_t* __restrict const alphaGreen = words.alphaGreen.data();
  std::uint32_t* __restrict const redBlue = words.redBlue.data();
  const FluidRow r = row;
  const auto [red, green, blue, alpha, rounding] = tint;
  for (std::size_t i = 0; i < width; ++i) {
    const float part =
        clampedToUnit(r.turn + sines0[i] * r.ofSines[0] + cosines0[i] * r.ofCosines[0] + sines1[i] * r.ofSines[1] +
                      cosines1[i] * r.ofCosines[1] + sines2[i] * r.ofSines[2] + cosines2[i] * r.ofCosines[2] +
                      sines3[i] * r.ofSines[3] + cosines3[i] * r.ofCosines[3]);
    const float turn = part * part * (3 - 2 * part);
    const float tinted = (alpha.value + alpha.slope * turn) * (r.vignette + vignettes[i]);
    alphaGreen[i] =
        fixedPoint(tinted + rounding) << 16 | fixedPoint((green.value + green.slope * turn) * tinted + rounding);
    redBlue[i] = fixedPoint((red.value + red.slope * turn) * tinted + rounding) << 16 |
                 fixedPoint((blue.value + blue.slope * turn) * tinted + rounding);
  }
}

// Both halves on their own, rounded to the nearest. The offset makes cutting off round downwards below zero, too.
HUSHPANE_KERNEL std::uint32_t changeOfWord(std::uint32_t from, std::uint32_t to, float perRow) {
  constexpr std::int32_t offset = 1 << 16;
  const auto share = [&](std::uint32_t start, std::uint32_t end) {
    const auto whole = static_cast<float>(static_cast<std::int32_t>(end) - static_cast<std::int32_t>(start));
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(whole * perRow + (offset + 0.5F)) - offset);
  };
  return (share(from >> 16, to >> 16) << 16) + share(from & 0xffff, to & 0xffff);
}

HUSHPANE_KERNEL void divideWords(const std::uint32_t* __restrict from, const std::uint32_t* __restrict to, float perRow,
                                 std::size_t width, std::uint32_t* __restrict change) {
  for (std::size_t i = 0; i < width; ++i) change[i] = changeOfWord(from[i], to[i], perRow);
}

HUSHPANE_KERNEL std::uint32_t pixel(std::uint32_t alphaGreen, std::uint32_t redBlue) {
  return (alphaGreen & 0xff00ff00) | (redBlue >> 8 & 0x00ff00ff);
}

HUSHPANE_KERNEL void writeTwoRows(std::uint32_t* __restrict alphaGreen, std::uint32_t* __restrict redBlue,
                                  const std::uint32_t* __restrict alphaGreenChange,
                                  const std::uint32_t* __restrict redBlueChange, std::size_t width,
                                  std::uint32_t* __restrict first, std::uint32_t* __restrict second) {
  for (std::size_t i = 0; i < width; ++i) {
    const std::uint32_t nextAlphaGreen = alphaGreen[i] + alphaGreenChange[i];
    const std::uint32_t nextRedBlue = redBlue[i] + redBlueChange[i];
    first[i] = pixel(alphaGreen[i], redBlue[i]);
    second[i] = pixel(nextAlphaGreen, nextRedBlue);
    alphaGreen[i] = nextAlphaGreen + alphaGreenChange[i];
    redBlue[i] = nextRedBlue + redBlueChange[i];
  }
}

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are attributes and names.
#define HUSHPANE_KERNELS(target, name)                                                                             \
  target void evaluate##name(const FluidColumns& columns, const FluidRow& row, const FluidTint& tint,              \
                             std::size_t width, FluidWords& words) {                                               \
    evaluateRow(columns, row, tint, width, words);                                                                 \
  }                                                                                                                \
  target void divide##name(const FluidWords& from, const FluidWords& to, std::size_t rows, std::size_t width,      \
                           FluidWords& change) {                                                                   \
    const float perRow = 1 / static_cast<float>(rows);                                                             \
    divideWords(from.alphaGreen.data(), to.alphaGreen.data(), perRow, width, change.alphaGreen.data());            \
    divideWords(from.redBlue.data(), to.redBlue.data(), perRow, width, change.redBlue.data());                     \
  }                                                                                                                \
  target void writeTwo##name(FluidWords& words, const FluidWords& change, std::size_t width, std::uint32_t* first, \
                             std::uint32_t* second) {                                                              \
    writeTwoRows(words.alphaGreen.data(), words.redBlue.data(), change.alphaGreen.data(), change.redBlue.data(),   \
                 width, first, second);                                                                            \
  }
// NOLINTEND(bugprone-macro-parentheses)

HUSHPANE_KERNELS(, Baseline)
#ifdef __x86_64__
HUSHPANE_KERNELS([[gnu::target("avx2,fma")]], Avx2)
constexpr FluidKernels avx2Kernels{evaluateAvx2, divideAvx2, writeTwoAvx2};
#endif

}  // namespace

constexpr FluidKernels baselineKernels{evaluateBaseline, divideBaseline, writeTwoBaseline};

const FluidKernels& bestKernels() {
#ifdef __x86_64__
  if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) return avx2Kernels;
#endif
  return baselineKernels;
}

}  // namespace hushpane::desktops

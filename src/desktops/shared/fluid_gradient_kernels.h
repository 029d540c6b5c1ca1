#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "desktops/shared/fluid_gradient_formula.h"

namespace hushpane::desktops {

// The inner loops of the fluid gradient's renderer.

template <typename Number>
using PerWave = std::array<Number, fluidWaves.size()>;

// What is known of every column of a frame at any time.
struct FluidColumns {
  PerWave<std::vector<float>> sines;
  PerWave<std::vector<float>> cosines;
  std::vector<float> vignette;
};

// What a row adds to it. With the columns' tables it gives how far a place is turned from one colour to the other,
// before it is smoothed, and the vignette.
struct FluidRow {
  PerWave<float> ofSines;
  PerWave<float> ofCosines;
  float turn = 0;
  float vignette = 0;
};

// value + slope * the smoothed turn
struct FluidChannel {
  float value = 0;
  float slope = 0;
};

struct FluidTint {
  FluidChannel red, green, blue;
  FluidChannel alpha;  // in 256ths of a step of 8 bits
  float rounding = 0;  // in the same unit, added to every premultiplied channel before its fraction is cut off
};

// Premultiplied channels in 8.8 fixed point, two in a word so that both are interpolated by one sum. The first named
// is the upper half.
struct FluidWords {
  std::vector<std::uint32_t> alphaGreen;
  std::vector<std::uint32_t> redBlue;
};

// All rows are of `width` pixels.
struct FluidKernels {
  void (*evaluate)(const FluidColumns& columns, const FluidRow& row, const FluidTint& tint, std::size_t width,
                   FluidWords& words);
  // The change from row to row between two rows that lie `rows` apart.
  void (*divide)(const FluidWords& from, const FluidWords& to, std::size_t rows, std::size_t width, FluidWords& change);
  // Two rows of pixels at once, which halves the trips to memory; leaves in `words` the row after them.
  void (*writeTwo)(FluidWords& words, const FluidWords& change, std::size_t width, std::uint32_t* first,
                   std::uint32_t* second);
};

extern const FluidKernels baselineKernels;

// Those for the processor that the program runs on.
const FluidKernels& bestKernels();

}  // namespace hushpane::desktops

#include "desktops/shared/fluid_gradient_renderer.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace hushpane::desktops {

namespace {

constexpr double steps = 255;     // of 8 bits
constexpr double fraction = 256;  // of a step, in fixed point

// Over a fortieth of the drawable's height a line in place of the curve is off by 0.04 steps at most.
constexpr int bandsInFrame = 40;

constexpr double roundToNearest = 0.5;
// What is stretched is rounded again: software servers cut the fraction off, others take the nearest. With a quarter of
// a step more both end less than one and a half steps from the formula, which leaves the nearest byte or one beside it.
constexpr double roundForStretching = 0.75;

// From the sum of the waves to the argument of the smooth step: sum * scale + start.
constexpr double waveCount = fluidWaves.size();
constexpr double turnScale = 1 / (2 * waveCount * (fluidTurnEnd - fluidTurnStart));
constexpr double turnStart = (0.5 - fluidTurnStart) / (fluidTurnEnd - fluidTurnStart);

// Nowhere is the vignette cut off at its least.
static_assert(1 - 2 * 0.5 * 0.5 * fluidVignette > fluidLeastVignette);

double lostAt(double place) {
  return (place - 0.5) * (place - 0.5) * fluidVignette;
}

FluidChannel between(double first, double second) {
  return {static_cast<float>(first), static_cast<float>(second - first)};
}

}  // namespace

FluidGradientRenderer::FluidGradientRenderer(Detail detail, const FluidKernels& kernels)
    : detail_(detail), kernels_(kernels) {}

FluidGradientRenderer::Axis FluidGradientRenderer::axis(int count, int length) {
  const double pixel = 1.0 / length;
  return {count, pixel / 2, count > 1 ? (1 - pixel) / (count - 1) : 0};
}

void FluidGradientRenderer::prepare(Size drawable) {
  if (drawable == drawable_) return;
  drawable_ = drawable;
  const bool isFull = detail_ == Detail::full;
  across_ = axis(isFull ? drawable.width : reduced(drawable.width), drawable.width);
  down_ = axis(isFull ? drawable.height : reduced(drawable.height), drawable.height);
  band_ = isFull ? std::max(1, drawable.height / bandsInFrame) : 1;
  const auto width = static_cast<std::size_t>(across_.count);
  for (auto* words : {&here_, &next_, &change_}) {
    words->alphaGreen.resize(width);
    words->redBlue.resize(width);
  }
  spare_.resize(width);
  fillColumns();
}

void FluidGradientRenderer::fillColumns() {
  const auto fill = [this](std::vector<float>& table, const auto& valueAt) {
    table.resize(static_cast<std::size_t>(across_.count));
    for (int column = 0; column < across_.count; ++column)
      table[static_cast<std::size_t>(column)] = static_cast<float>(valueAt(across_.place(column)));
  };
  fill(columns_.vignette, [](double x) { return -lostAt(x); });
  for (std::size_t wave = 0; wave < fluidWaves.size(); ++wave) {
    fill(columns_.sines[wave], [wave](double x) { return std::sin(fluidWaves[wave].x * x); });
    fill(columns_.cosines[wave], [wave](double x) { return std::cos(fluidWaves[wave].x * x); });
  }
}

void FluidGradientRenderer::move(const platform::FluidUniforms& uniforms) {
  const double drift = uniforms.time * fluidPace;
  for (std::size_t wave = 0; wave < fluidWaves.size(); ++wave)
    phases_[wave] = std::fmod(drift * fluidWaves[wave].rate, 2 * std::numbers::pi);
  const auto [first, second] = fluidEnds(uniforms);
  const double rounding =
      across_.count < drawable_.width || down_.count < drawable_.height ? roundForStretching : roundToNearest;
  tint_ = {between(first.red, second.red), between(first.green, second.green), between(first.blue, second.blue),
           between(first.alpha * steps * fraction, second.alpha * steps * fraction),
           static_cast<float>(rounding * fraction)};
}

// The row's part of sin(x + y) = sin x * cos y + cos x * sin y.
void FluidGradientRenderer::evaluate(int row, FluidWords& words) {
  const double y = 1 - down_.place(row);
  FluidRow terms;
  terms.turn = static_cast<float>(turnStart);
  terms.vignette = static_cast<float>(1 - lostAt(y));
  for (std::size_t wave = 0; wave < fluidWaves.size(); ++wave) {
    const double phase = fluidWaves[wave].y * y + phases_[wave];
    terms.ofSines[wave] = static_cast<float>(std::cos(phase) * turnScale);
    terms.ofCosines[wave] = static_cast<float>(std::sin(phase) * turnScale);
  }
  kernels_.evaluate(columns_, terms, tint_, static_cast<std::size_t>(across_.count), words);
}

void FluidGradientRenderer::draw(const platform::FluidUniforms& uniforms, int width, int height,
                                 platform::Image& frame) {
  prepare({width, height});
  move(uniforms);
  frame.width = across_.count;
  frame.height = down_.count;
  frame.pixels.resize(spare_.size() * static_cast<std::size_t>(frame.height));
  evaluate(0, next_);
  for (int top = 0; top < frame.height; top += band_) {
    std::swap(here_, next_);
    evaluate(top + band_, next_);
    writeBand(top, std::min(top + band_, frame.height), frame);
  }
}

// From `here_`, the row `top`, to `next_`.
void FluidGradientRenderer::writeBand(int top, int end, platform::Image& frame) {
  const auto width = spare_.size();
  const auto pixels = [&](int row) {
    return row < end ? frame.pixels.data() + width * static_cast<std::size_t>(row) : spare_.data();
  };
  kernels_.divide(here_, next_, static_cast<std::size_t>(band_), width, change_);
  for (int row = top; row < end; row += 2) kernels_.writeTwo(here_, change_, width, pixels(row), pixels(row + 1));
}

}  // namespace hushpane::desktops

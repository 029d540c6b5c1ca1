// A frame of the fluid gradient, drawn on the processor.

#include <cstring>
#include <string>
#include <utility>

#include "bench/figure.h"
#include "bench/timings.h"
#include "desktops/shared/fluid_gradient_renderer.h"

namespace {

using namespace hushpane;
using namespace hushpane::bench;
using desktops::FluidGradientRenderer;
using platform::FluidUniforms;
using platform::Image;
using Detail = FluidGradientRenderer::Detail;

constexpr int width = 1920, height = 1200;

// The next frame of thirty in a second.
FluidUniforms next() {
  static float time = 0;
  return {time += 1.0F / 30, 0.6F, 0.65F};
}

std::size_t bytesOf(const Image& image) {
  return image.pixels.size() * sizeof image.pixels.front();
}

// Pixel by pixel, as the formula stands.
void drawByFormula(const FluidUniforms& uniforms, Image& frame) {
  auto pixel = frame.pixels.begin();
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const auto color = desktops::fluidGradient(uniforms, {(x + 0.5) / width, 1 - (y + 0.5) / height});
      const double alpha = color.alpha * 255;
      const auto byte = [](double value) { return static_cast<std::uint32_t>(value + 0.5); };
      *pixel++ =
          byte(alpha) << 24 | byte(color.red * alpha) << 16 | byte(color.green * alpha) << 8 | byte(color.blue * alpha);
    }
}

template <typename Draw>
void measure(const char* name, Image& frame, const Draw& draw) {
  benchmark::RegisterBenchmark(name, [&frame, draw](benchmark::State& state) {
    for (auto _ : state) {
      draw(frame);
      benchmark::DoNotOptimize(frame.pixels.data());
      benchmark::ClobberMemory();
    }
  });
}

void measure(const char* name, Image& frame, FluidGradientRenderer& renderer) {
  measure(name, frame, [&renderer](Image& image) { renderer.draw(next(), width, height, image); });
}

std::string milliseconds(double seconds) {
  return text(seconds * 1e3, "ms", seconds < 0.1 ? 3 : 1);
}

void printFaster(const char* what, double time, double formula) {
  const double times = formula / time;
  print({what, milliseconds(time), "the formula, pixel by pixel: " + milliseconds(formula), times, "at least 70",
         times >= 70});
}

void printSlower(const char* what, double time, double memset) {
  const double times = time / memset;
  print({what, milliseconds(time), "memset of its bytes: " + milliseconds(memset), times, "at most 8", times <= 8});
}

}  // namespace

int main() {
  Image full, reduced, baseline, formula;
  FluidGradientRenderer everyPixel(Detail::full), few(Detail::reduced),
      everyPixelAnywhere(Detail::full, desktops::baselineKernels);
  for (auto* image : {&full, &baseline, &formula}) everyPixel.draw(next(), width, height, *image);
  few.draw(next(), width, height, reduced);

  measure("formula", formula, [](Image& image) { drawByFormula(next(), image); });
  measure("full", full, everyPixel);
  measure("baseline", baseline, everyPixelAnywhere);
  measure("reduced", reduced, few);
  measure("memset", full, [](Image& image) { std::memset(image.pixels.data(), 1, bytesOf(image)); });
  auto times = runBenchmarks(TimeOf::processor);

  printFaster("gradient frame 1920x1200, every pixel", times["full"], times["formula"]);
  printSlower("gradient frame 1920x1200, every pixel", times["full"], times["memset"]);
  printSlower("gradient frame 1920x1200, without AVX2", times["baseline"], times["memset"]);
  print({"gradient frame for 1920x1200, reduced to " + std::to_string(reduced.width) + "x" +
             std::to_string(reduced.height),
         milliseconds(times["reduced"]),
         "every pixel: " + milliseconds(times["full"]),
         times["reduced"] / times["full"],
         {},
         {}});
  print({"gradient frame for 1920x1200: bytes",
         std::to_string(bytesOf(reduced)) + " bytes",
         "every pixel: " + std::to_string(bytesOf(full)) + " bytes",
         static_cast<double>(bytesOf(reduced)) / static_cast<double>(bytesOf(full)),
         {},
         {}});
}

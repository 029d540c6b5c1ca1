#pragma once

#include <vector>

#include "desktops/shared/fluid_gradient_kernels.h"
#include "platform/gpu_device.h"

namespace hushpane::desktops {

// A device for the fluid gradient that needs no more than the processor. By the addition theorem every wave is a
// product of what belongs to the column and what belongs to the row, so no sine is left to the pixels; rows that lie
// close together are interpolated. Its tables are kept from frame to frame.
class FluidGradientRenderer : public platform::GpuDevice {
 public:
  enum class Detail {
    reduced,  // as few pixels as show the same when they are stretched
    full,     // all pixels of the drawable
  };

  explicit FluidGradientRenderer(Detail detail = Detail::reduced, const FluidKernels& kernels = bestKernels());

  void draw(const platform::FluidUniforms& uniforms, int width, int height, platform::Image& frame) override;

  // How many pixels of a reduced frame stand for `length` pixels of a drawable, in either direction. The waves are so
  // long that lines between 64 places are off by 0.02 steps of 8 bits at most; that software servers weigh pixels with
  // 7 bits and place them by sums of fractions of 16 adds 0.1. (With 32 places it would be three times as much.) All
  // the rest of the error is rounding: the server gets bytes and makes bytes.
  static constexpr int reduced(int length) { return length < 64 ? length : 64; }

 private:
  struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size&) const = default;
  };
  // The frame's pixels in one direction, and where their centres are on the drawable.
  struct Axis {
    int count = 0;
    double start = 0;
    double step = 0;
    double place(int index) const { return start + step * index; }
  };

  static Axis axis(int count, int length);
  void prepare(Size drawable);
  void fillColumns();
  void move(const platform::FluidUniforms& uniforms);
  void evaluate(int row, FluidWords& words);
  void writeBand(int top, int end, platform::Image& frame);

  const Detail detail_;
  const FluidKernels& kernels_;
  // By the drawable's size.
  Size drawable_;
  Axis across_, down_;
  int band_ = 0;  // from one evaluated row to the next; those between are interpolated
  FluidColumns columns_;
  FluidWords here_, next_, change_;
  std::vector<std::uint32_t> spare_;  // where the second of two rows goes that nobody needs
  // By the uniforms.
  PerWave<double> phases_{};
  FluidTint tint_;
};

}  // namespace hushpane::desktops

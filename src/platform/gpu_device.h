#pragma once

#include "platform/image.h"

namespace hushpane::platform {

// What a frame of the fluid gradient depends on, besides the place in it.
struct FluidUniforms {
  float time = 0;   // seconds
  float hue = 0;    // in [0, 1)
  float alpha = 0;  // the strongest tint, in [0, 1]

  bool operator==(const FluidUniforms&) const = default;
};

// A device that draws the fluid gradient. A desktop may have none.
class GpuDevice {
 public:
  virtual ~GpuDevice() = default;

  // Draws one frame for a drawable of that size in pixels, at least 1 by 1, into `frame`, whose memory is used again.
  // The frame may have fewer pixels than the drawable. The centres of its corner pixels are then those of the
  // drawable's corner pixels, and with linear interpolation in between it shows the same, to within one step of 8 bits.
  virtual void draw(const FluidUniforms& uniforms, int width, int height, Image& frame) = 0;
};

}  // namespace hushpane::platform

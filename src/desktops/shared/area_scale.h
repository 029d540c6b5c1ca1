#pragma once

#include <cstdint>
#include <functional>

#include "platform/image.h"

namespace hushpane::desktops {

// A picture that is read one row at a time, from the top.
struct PixelRows {
  int width = 0;
  int height = 0;
  // Writes the `width` premultiplied pixels of a row.
  std::function<void(int row, std::uint32_t* pixels)> read;
};

// The whole picture stretched into that size, each pixel the mean of the area that it covers. All sizes are positive.
// Reads each row once and keeps no other copy of the picture.
platform::Image areaScaled(const PixelRows& rows, int width, int height);

}  // namespace hushpane::desktops

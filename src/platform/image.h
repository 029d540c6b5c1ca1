#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace hushpane::platform {

// A decoded picture: 32-bit pixels row by row from the top, 0xAARRGGBB, premultiplied, without padding.
struct Image {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

using ImagePtr = std::shared_ptr<const Image>;

}  // namespace hushpane::platform

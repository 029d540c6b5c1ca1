#pragma once

#include <cstdint>
#include <vector>

#include "platform/image.h"

namespace hushpane::x11 {

// The image scaled so that it fills width x height pixels and keeps its shape, what is too much cut off evenly at both
// sides. Each pixel is the average of what it covers, or lies between its neighbours where the image is enlarged. Rows
// from the top, 0xAARRGGBB, premultiplied. An empty image gives transparent pixels.
std::vector<std::uint32_t> aspectFilled(const platform::Image& image, int width, int height);

}  // namespace hushpane::x11

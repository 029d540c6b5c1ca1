#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace hushpane::platform {

// A decoded picture: 32-bit pixels row by row from the top, 0xAARRGGBB, premultiplied, without padding.
struct Image {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

using ImagePtr = std::shared_ptr<const Image>;

// The resources that come with the program.
class Bundle {
 public:
  virtual ~Bundle() = default;

  // The picture of that name, null when it is missing or cannot be decoded. A picture is kept only while someone
  // holds it.
  virtual ImagePtr image(std::string_view name) = 0;
};

}  // namespace hushpane::platform

#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
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

  // The file of the picture of that name; nothing when it is missing.
  virtual std::optional<std::filesystem::path> imageURL(std::string_view name) const = 0;
};

}  // namespace hushpane::platform

#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace hushpane::platform {

// The resources that come with the program.
class Bundle {
 public:
  virtual ~Bundle() = default;

  // The file of the picture of that name; nothing when it is missing.
  virtual std::optional<std::filesystem::path> imageURL(std::string_view name) const = 0;
};

}  // namespace hushpane::platform

#pragma once

#include <filesystem>

#include "platform/image.h"

namespace hushpane::platform {

// Decodes picture files of the usual still forms, upright as their orientation says. Both operations give null on any
// failure, take a bounded amount of memory whatever the file claims, and may run on any thread.
class ImageLoader {
 public:
  virtual ~ImageLoader() = default;

  // The whole picture at no more than is needed to fill `width` by `height` pixels: each side is at least as large as
  // asked, unless the picture itself is smaller. Never enlarged; the aspect is kept.
  virtual ImagePtr load(const std::filesystem::path& file, int width, int height) const = 0;
  // The whole picture stretched into exactly `width` by `height` pixels, each the mean of what it covers.
  virtual ImagePtr scaled(const std::filesystem::path& file, int width, int height) const = 0;
};

}  // namespace hushpane::platform

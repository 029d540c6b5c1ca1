#pragma once

#include "platform/image_loader.h"

namespace hushpane::desktops {

// Decodes by image_file.h.
class ImageFileLoader : public platform::ImageLoader {
 public:
  platform::ImagePtr load(const std::filesystem::path& file, int width, int height) const override;
  platform::ImagePtr scaled(const std::filesystem::path& file, int width, int height) const override;
};

}  // namespace hushpane::desktops

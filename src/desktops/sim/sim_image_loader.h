#pragma once

#include <atomic>

#include "desktops/shared/image_file_loader.h"

namespace hushpane::sim {

// Decodes picture files and counts how often it was asked.
class SimImageLoader : public desktops::ImageFileLoader {
 public:
  platform::ImagePtr load(const std::filesystem::path& file, int width, int height) const override;
  platform::ImagePtr scaled(const std::filesystem::path& file, int width, int height) const override;

  int loads() const { return loads_; }
  int scalings() const { return scalings_; }

 private:
  mutable std::atomic<int> loads_ = 0;
  mutable std::atomic<int> scalings_ = 0;
};

}  // namespace hushpane::sim

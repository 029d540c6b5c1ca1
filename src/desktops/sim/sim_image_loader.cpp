#include "desktops/sim/sim_image_loader.h"

namespace hushpane::sim {

platform::ImagePtr SimImageLoader::load(const std::filesystem::path& file, int width, int height) const {
  ++loads_;
  return ImageFileLoader::load(file, width, height);
}

platform::ImagePtr SimImageLoader::scaled(const std::filesystem::path& file, int width, int height) const {
  ++scalings_;
  return ImageFileLoader::scaled(file, width, height);
}

}  // namespace hushpane::sim

#include "desktops/shared/image_file_loader.h"

#include "desktops/shared/image_file.h"

namespace hushpane::desktops {

platform::ImagePtr ImageFileLoader::load(const std::filesystem::path& file, int width, int height) const {
  return loadImageFile(file, width, height);
}

platform::ImagePtr ImageFileLoader::scaled(const std::filesystem::path& file, int width, int height) const {
  return scaleImageFile(file, width, height);
}

}  // namespace hushpane::desktops

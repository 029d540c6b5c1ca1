#include "desktops/shared/image_file_loader.h"

#include <algorithm>
#include <memory>

#include "desktops/shared/area_scale.h"
#include "desktops/shared/image_file.h"

namespace hushpane::desktops {

platform::ImagePtr ImageFileLoader::load(const std::filesystem::path& file, int, int) const {
  return decodeImageFile(file);
}

platform::ImagePtr ImageFileLoader::scaled(const std::filesystem::path& file, int width, int height) const {
  const auto image = decodeImageFile(file);
  if (!image || width < 1 || height < 1) return nullptr;
  const PixelRows rows{image->width, image->height, [&](int row, std::uint32_t* pixels) {
                         std::copy_n(image->pixels.begin() + static_cast<std::ptrdiff_t>(row) * image->width,
                                     image->width, pixels);
                       }};
  return std::make_shared<platform::Image>(areaScaled(rows, width, height));
}

}  // namespace hushpane::desktops

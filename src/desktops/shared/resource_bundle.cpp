#include "desktops/shared/resource_bundle.h"

#include <cstdlib>
#include <utility>

#include "desktops/shared/files.h"
#include "desktops/shared/image_file.h"

namespace hushpane::desktops {

std::filesystem::path resourceFolder() {
  std::error_code error;
  return resourceFolder(std::filesystem::read_symlink("/proc/self/exe", error));
}

std::filesystem::path resourceFolder(const std::filesystem::path& binary) {
  if (const char* named = std::getenv("HUSHPANE_RESOURCES"); named && *named) return named;
  std::error_code error;
  auto beside = binary.parent_path() / "resources";
  if (std::filesystem::is_directory(beside, error)) return beside;
  return binary.parent_path().parent_path() / "share" / "hushpane";
}

ResourceBundle::ResourceBundle(std::filesystem::path folder) : folder_(std::move(folder)) {}

platform::ImagePtr ResourceBundle::image(std::string_view name) {
  if (!isPlainFileName(name)) return nullptr;
  auto& kept = images_[std::string(name)];
  if (auto held = kept.lock()) return held;
  platform::ImagePtr image;
  for (const char* extension : {".png", ".svg"})
    if (!image) image = decodeImageFile(folder_ / (std::string(name) + extension));
  kept = image;
  return image;
}

}  // namespace hushpane::desktops

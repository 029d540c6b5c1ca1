#include "desktops/shared/resource_bundle.h"

#include <cstdlib>
#include <string>
#include <utility>

#include "desktops/shared/files.h"

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

std::optional<std::filesystem::path> ResourceBundle::imageURL(std::string_view name) const {
  if (!isPlainFileName(name)) return std::nullopt;
  std::error_code error;
  for (const char* extension : {".png", ".svg"})
    if (auto file = folder_ / (std::string(name) + extension); std::filesystem::is_regular_file(file, error)) return file;
  return std::nullopt;
}

}  // namespace hushpane::desktops

#include "desktops/shared/resource_bundle.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include "desktops/shared/files.h"
#include "desktops/shared/strings_table.h"

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
    if (auto file = folder_ / (std::string(name) + extension); std::filesystem::is_regular_file(file, error))
      return file;
  return std::nullopt;
}

std::string ResourceBundle::infoString(std::string_view key) const {
  return key == platform::bundleKey::shortVersion ? HUSHPANE_VERSION : "";
}

platform::LocalizedStringsPtr ResourceBundle::localizedStrings(std::string_view code) const {
  if (!isPlainFileName(code)) return nullptr;
  const auto folder = folder_ / (std::string(code) + ".lproj");
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) return nullptr;
  return std::make_shared<platform::LocalizedStrings>(readStringsTable(folder / "Localizable.strings"));
}

}  // namespace hushpane::desktops

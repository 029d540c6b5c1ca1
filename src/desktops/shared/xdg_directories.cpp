#include "desktops/shared/xdg_directories.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace hushpane::desktops {

namespace {

constexpr mode_t ownerOnly = 0700;

std::optional<std::filesystem::path> absolutePath(const char* text) {
  if (!text || *text != '/') return std::nullopt;
  return text;
}

std::optional<std::filesystem::path> home() {
  if (auto named = absolutePath(std::getenv("HOME"))) return named;
  const passwd* user = getpwuid(getuid());
  return user ? absolutePath(user->pw_dir) : std::nullopt;
}

std::optional<std::filesystem::path> folder(const char* variable, const char* belowHome) {
  if (auto named = absolutePath(std::getenv(variable))) return named;
  const auto base = home();
  return base ? std::optional(*base / belowHome) : std::nullopt;
}

// `own`, and the absolute paths that the variable lists, parted by colons.
std::vector<std::filesystem::path> folders(const std::optional<std::filesystem::path>& own, const char* variable,
                                           std::string_view usual) {
  std::vector<std::filesystem::path> found;
  if (own) found.push_back(*own);
  const char* value = std::getenv(variable);
  for (std::string_view rest = value && *value ? value : usual; !rest.empty();) {
    const auto name = rest.substr(0, rest.find(':'));
    if (name.starts_with('/')) found.emplace_back(name);
    rest.remove_prefix(std::min(name.size() + 1, rest.size()));
  }
  return found;
}

}  // namespace

std::optional<std::filesystem::path> configHome() {
  return folder("XDG_CONFIG_HOME", ".config");
}

std::optional<std::filesystem::path> dataHome() {
  return folder("XDG_DATA_HOME", ".local/share");
}

std::vector<std::filesystem::path> configFolders() {
  return folders(configHome(), "XDG_CONFIG_DIRS", "/etc/xdg");
}

std::vector<std::filesystem::path> dataFolders() {
  return folders(dataHome(), "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
}

bool makePrivateFolder(const std::filesystem::path& folder) {
  std::error_code error;
  if (std::filesystem::is_directory(folder, error)) return true;
  if (!folder.has_relative_path() || !makePrivateFolder(folder.parent_path())) return false;
  mkdir(folder.c_str(), ownerOnly);
  return std::filesystem::is_directory(folder, error);
}

}  // namespace hushpane::desktops

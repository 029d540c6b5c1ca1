#pragma once

#include <filesystem>
#include <optional>
#include <vector>

namespace hushpane::desktops {

// The user's folders by the XDG Base Directory Specification: the variable when it holds an absolute path, else the
// standard place in the home folder. Nothing when there is no home folder either. They need not exist.
std::optional<std::filesystem::path> configHome();  // $XDG_CONFIG_HOME, else ~/.config
std::optional<std::filesystem::path> dataHome();    // $XDG_DATA_HOME, else ~/.local/share

// The user's folder and then the system's ($XDG_CONFIG_DIRS, $XDG_DATA_DIRS), the most important one first.
std::vector<std::filesystem::path> configFolders();
std::vector<std::filesystem::path> dataFolders();

// Makes the folder and its missing parents, for the user alone, as the XDG Base Directory rules ask; false when it is
// not there afterwards.
bool makePrivateFolder(const std::filesystem::path& folder);

}  // namespace hushpane::desktops

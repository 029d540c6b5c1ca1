#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/screen.h"

namespace hushpane::session {

// One line of the settings of Plasma: KEY=VALUE below a line of [GROUP] or [GROUP][GROUP...].
struct PlasmaEntry {
  std::string_view group;  // with its brackets
  std::string_view key;
  std::string_view value;
};

// Hands over every entry of a file; false when it cannot be read.
bool readPlasmaFile(const std::filesystem::path& file, const std::function<void(const PlasmaEntry&)>& take);

// Of the first of these files that has it.
std::optional<std::string> plasmaSetting(std::span<const std::filesystem::path> files, std::string_view group,
                                         std::string_view key);

// --- wallpapers ---

// What the chosen global theme shows where the user has chosen nothing: a name for plasmaWallpaper().
std::optional<std::string> plasmaDefaultWallpaper();

// The file that a setting names: by its path or URI, or by the name of an installed wallpaper. A wallpaper is a file,
// or a folder that holds one picture in several sizes; of these it is the one that fits the screen best.
std::optional<std::filesystem::path> plasmaWallpaper(const std::string& name, const platform::Screen& screen);

}  // namespace hushpane::session

#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "desktops/shared/plist_defaults.h"

namespace hushpane::desktops {

// Where the program keeps its settings below the user's configuration folder; nothing where there is none.
std::optional<std::filesystem::path> settingsFolder(const std::optional<std::filesystem::path>& configHome);

// The sets of settings of one folder: the one named NAME is in NAME.plist.
class DefaultsFolder {
 public:
  // Without a folder all settings last as long as the process.
  DefaultsFolder(std::optional<std::filesystem::path> folder, platform::MainQueue& queue,
                 platform::NotificationCenter& center);

  // The same set for the same name, made on first use; null for a name that is no file name.
  platform::UserDefaults* open(std::string_view name);

 private:
  std::optional<std::filesystem::path> folder_;
  platform::MainQueue& queue_;
  platform::NotificationCenter& center_;
  std::map<std::string, std::unique_ptr<PlistDefaults>, std::less<>> sets_;
};

}  // namespace hushpane::desktops

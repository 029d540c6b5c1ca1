#include "desktops/shared/defaults_folder.h"

#include <utility>

namespace hushpane::desktops {

std::optional<std::filesystem::path> settingsFolder(const std::optional<std::filesystem::path>& configHome) {
  return configHome ? std::optional(*configHome / "hushpane") : std::nullopt;
}

DefaultsFolder::DefaultsFolder(std::optional<std::filesystem::path> folder, platform::MainQueue& queue,
                               platform::NotificationCenter& center)
    : folder_(std::move(folder)), queue_(queue), center_(center) {}

platform::UserDefaults* DefaultsFolder::open(std::string_view name) {
  if (!isPlainFileName(name)) return nullptr;
  auto& set = sets_[std::string(name)];
  if (!set) {
    const auto file = folder_ ? *folder_ / (std::string(name) + ".plist") : std::filesystem::path{};
    set = std::make_unique<PlistDefaults>(file, queue_, center_);
  }
  return set.get();
}

}  // namespace hushpane::desktops

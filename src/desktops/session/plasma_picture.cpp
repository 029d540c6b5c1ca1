#include <algorithm>
#include <array>
#include <map>

#include "desktops/session/picture_sources.h"
#include "desktops/session/plasma_settings.h"
#include "desktops/shared/xdg_directories.h"

namespace hushpane::session {

namespace {

constexpr std::string_view imagePlugin = "org.kde.image";
constexpr std::string_view prefix = "[Containments][";

// One desktop or panel of Plasma: what shows it, where, and the picture in it.
struct Containment {
  std::string form{"0"};  // a desktop; panels have others
  std::string plugin{imagePlugin};
  std::string screen;
  std::string image;
};

using Containments = std::map<std::string, Containment, std::less<>>;

void take(Containments& containments, const PlasmaEntry& entry) {
  if (!entry.group.starts_with(prefix)) return;
  const auto rest = entry.group.substr(prefix.size());
  const auto end = rest.find(']');
  if (end == rest.npos) return;
  auto& containment = containments[std::string(rest.substr(0, end))];
  const auto inner = rest.substr(end + 1);
  if (inner.empty() && entry.key == "formfactor") containment.form = entry.value;
  if (inner.empty() && entry.key == "wallpaperplugin") containment.plugin = entry.value;
  if (inner.empty() && entry.key == "lastScreen") containment.screen = entry.value;
  if (inner == "[Wallpaper][org.kde.image][General]" && entry.key == "Image") containment.image = entry.value;
}

// The first screen's, of several (each activity has one) one with a picture of its own.
Containment desktopIn(const Containments& containments) {
  constexpr std::array choices{
      +[](const Containment& desktop) { return desktop.screen == "0" && !desktop.image.empty(); },
      +[](const Containment& desktop) { return desktop.screen == "0"; },
      +[](const Containment& desktop) { return !desktop.image.empty(); },
  };
  for (const auto isChosen : choices)
    for (const auto& [id, containment] : containments)
      if (containment.form == "0" && isChosen(containment)) return containment;
  return {};
}

}  // namespace

std::optional<std::filesystem::path> plasmaPicture(const platform::Screen& screen) {
  const auto home = desktops::configHome();
  if (!home) return std::nullopt;
  Containments containments;
  readPlasmaFile(*home / "plasma-org.kde.plasma.desktop-appletsrc",
                 [&](const PlasmaEntry& entry) { take(containments, entry); });
  const auto desktop = desktopIn(containments);
  if (desktop.plugin != imagePlugin) return std::nullopt;
  const auto name = desktop.image.empty() ? plasmaDefaultWallpaper() : std::optional(desktop.image);
  return name ? plasmaWallpaper(*name, screen) : std::nullopt;
}

}  // namespace hushpane::session

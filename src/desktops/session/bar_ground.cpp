#include "desktops/session/bar_ground.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "desktops/session/theme_name.h"
#include "desktops/shared/files.h"
#include "desktops/shared/xdg_directories.h"

namespace hushpane::session {

namespace {

constexpr std::size_t largestFile = 1 << 16;

// The value of a line NAME=VALUE below the line [GROUP]; empty when there is none.
std::string_view valueIn(std::string_view text, std::string_view group, std::string_view name) {
  bool isInGroup = false;
  while (!text.empty()) {
    const auto line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (line.starts_with('['))
      isInGroup = line.substr(1).starts_with(group) && line.substr(1 + group.size()).starts_with(']');
    else if (isInGroup && line.starts_with(name) && line.substr(name.size()).starts_with('='))
      return line.substr(name.size() + 1);
  }
  return {};
}

// Plasma draws its bars after a theme of their own: the user's, else that of the looks that the user chose. One that is
// not dark may follow the colours of programs.
std::optional<bool> isPlasmaBarDark() {
  const auto home = desktops::configHome();
  if (!home) return std::nullopt;
  for (const char* file : {"plasmarc", "kdedefaults/plasmarc"}) {
    const auto text = desktops::readFile(*home / file, largestFile);
    const auto theme = text ? valueIn(text->bytes, "Theme", "name") : std::string_view();
    if (!theme.empty()) return isDarkTheme(theme) ? std::optional(true) : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

std::optional<bool> isBarDark() {
  const char* variable = std::getenv("XDG_CURRENT_DESKTOP");
  const std::string_view desktop = variable ? variable : "";
  if (desktop.find("GNOME") != desktop.npos) return true;
  return desktop.find("KDE") == desktop.npos ? std::nullopt : isPlasmaBarDark();
}

}  // namespace hushpane::session

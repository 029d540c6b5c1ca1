#include "desktops/session/desktop_picture.h"

#include <glib.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

#include "desktops/session/picture_sources.h"

namespace hushpane::session {

namespace {

// A desktop as it calls itself in XDG_CURRENT_DESKTOP, and what tells of its background.
template <class Function>
struct Source {
  std::string_view desktop;
  Function* tell;
};

constexpr std::array<Source<std::optional<DesktopBackground>()>, 8> backgrounds{{
    {"GNOME", gnomeBackground},
    {"Unity", gnomeBackground},
    {"Budgie", gnomeBackground},
    {"pop", gnomeBackground},
    {"ubuntu", gnomeBackground},
    {"X-Cinnamon", cinnamonBackground},
    {"Cinnamon", cinnamonBackground},
    {"MATE", mateBackground},
}};

constexpr std::array<Source<std::optional<std::filesystem::path>(const platform::Screen&)>, 2> pictures{{
    {"XFCE", xfcePicture},
    {"KDE", plasmaPicture},
}};

// The most special one first.
std::vector<std::string_view> currentDesktops() {
  std::vector<std::string_view> names;
  const char* variable = std::getenv("XDG_CURRENT_DESKTOP");
  for (std::string_view rest = variable ? variable : ""; !rest.empty();) {
    const auto colon = rest.find(':');
    names.push_back(rest.substr(0, colon));
    rest = colon == rest.npos ? std::string_view() : rest.substr(colon + 1);
  }
  return names;
}

std::optional<std::filesystem::path> pictureOf(std::string_view desktop, const platform::Screen& screen) {
  for (const auto& source : backgrounds)
    if (source.desktop == desktop)
      if (const auto background = source.tell()) return background->picture;
  for (const auto& source : pictures)
    if (source.desktop == desktop) return source.tell(screen);
  return std::nullopt;
}

}  // namespace

std::optional<DesktopBackground> desktopBackground() {
  for (const auto desktop : currentDesktops())
    for (const auto& source : backgrounds)
      if (source.desktop == desktop)
        if (auto background = source.tell()) return background;
  return std::nullopt;
}

std::optional<std::filesystem::path> desktopPicture(const platform::Screen& screen) {
  for (const auto desktop : currentDesktops()) {
    const auto file = pictureOf(desktop, screen);
    std::error_code error;
    if (file && std::filesystem::is_regular_file(*file, error)) return file;
  }
  return std::nullopt;
}

std::optional<std::filesystem::path> localFile(const std::string& name) {
  if (name.starts_with('/')) return name;
  char* host = nullptr;
  const std::unique_ptr<char, void (*)(void*)> file(g_filename_from_uri(name.c_str(), &host, nullptr), g_free);
  const std::unique_ptr<char, void (*)(void*)> named(host, g_free);
  return file && !named ? std::optional<std::filesystem::path>(file.get()) : std::nullopt;
}

}  // namespace hushpane::session

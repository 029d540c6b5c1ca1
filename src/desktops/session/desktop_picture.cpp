#include "desktops/session/desktop_picture.h"

#include <array>
#include <cstdlib>
#include <string_view>

#include "desktops/session/picture_sources.h"

namespace hushpane::session {

namespace {

struct Source {
  std::string_view desktop;  // as it calls itself in XDG_CURRENT_DESKTOP
  std::optional<std::filesystem::path> (*picture)(const platform::Screen&);
};

constexpr std::array sources{
    Source{"GNOME", gnomePicture},       Source{"Unity", gnomePicture},  Source{"Budgie", gnomePicture},
    Source{"pop", gnomePicture},         Source{"ubuntu", gnomePicture}, Source{"X-Cinnamon", cinnamonPicture},
    Source{"Cinnamon", cinnamonPicture}, Source{"MATE", matePicture},    Source{"XFCE", xfcePicture},
    Source{"KDE", plasmaPicture},
};

std::optional<std::filesystem::path> pictureOf(std::string_view desktop, const platform::Screen& screen) {
  for (const auto& source : sources) {
    if (source.desktop != desktop) continue;
    std::error_code error;
    auto file = source.picture(screen);
    return file && std::filesystem::is_regular_file(*file, error) ? file : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::filesystem::path> desktopPicture(const platform::Screen& screen) {
  const char* variable = std::getenv("XDG_CURRENT_DESKTOP");
  for (std::string_view names = variable ? variable : ""; !names.empty();) {
    const auto colon = names.find(':');
    if (auto file = pictureOf(names.substr(0, colon), screen)) return file;
    names = colon == names.npos ? std::string_view() : names.substr(colon + 1);
  }
  return std::nullopt;
}

}  // namespace hushpane::session

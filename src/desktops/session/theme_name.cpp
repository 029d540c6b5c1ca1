#include "desktops/session/theme_name.h"

#include <glib.h>

#include <cstdlib>
#include <utility>

#include "desktops/session/desktop_settings.h"

namespace hushpane::session {

namespace {

constexpr const char* themeKey = "gtk-theme";

// Desktops that took over GNOME's settings have copies of their own and leave GNOME's alone.
const char* themeSchema() {
  const char* variable = std::getenv("XDG_CURRENT_DESKTOP");
  const std::string_view desktop = variable ? variable : "";
  if (desktop.find("Cinnamon") != desktop.npos) return "org.cinnamon.desktop.interface";
  if (desktop.find("MATE") != desktop.npos) return "org.mate.interface";
  return "org.gnome.desktop.interface";
}

bool isWord(std::string_view name, std::size_t first, std::size_t last) {
  const bool beginsInside = first > 0 && g_ascii_isalpha(name[first - 1]);
  const bool beginsWithHump = g_ascii_isupper(name[first]) && first > 0 && g_ascii_islower(name[first - 1]);
  const bool endsInside = last < name.size() && g_ascii_islower(name[last]);
  return (!beginsInside || beginsWithHump) && !endsInside;
}

}  // namespace

bool isDarkTheme(std::string_view name) {
  constexpr std::string_view dark = "dark";
  for (std::size_t first = 0; first + dark.size() <= name.size(); ++first)
    if (g_ascii_strncasecmp(name.data() + first, dark.data(), dark.size()) == 0 &&
        isWord(name, first, first + dark.size()))
      return true;
  return false;
}

ThemeSetting::ThemeSetting(std::function<void()> changed) : settings_(textSettings(themeSchema(), themeKey)) {
  if (settings_) {
    settings_->signal_changed(themeKey).connect(
        lifetime_.weak([changed = std::move(changed)](const Glib::ustring&) { changed(); }));
  }
}

std::optional<std::string> ThemeSetting::name() const {
  return settings_ ? std::optional<std::string>(settings_->get_string(themeKey)) : std::nullopt;
}

}  // namespace hushpane::session

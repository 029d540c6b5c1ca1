#pragma once

#include <giomm/settings.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "desktops/session/bus_service.h"
#include "desktops/session/theme_name.h"
#include "platform/handler_list.h"
#include "platform/lifetime.h"
#include "platform/system_appearance.h"

namespace hushpane::session {

// Light or dark, and the accent, as the settings portal tells them; it is asked in the background, again whenever it
// comes, and followed. Where no portal tells of light and dark, GNOME's own setting counts. Where the user prefers
// neither, the name of the theme tells, else it is light.
class PortalAppearance : public platform::SystemAppearance {
 public:
  explicit PortalAppearance(BusService& portal, ThemeSource theme = {});

  bool isDark() const override { return looks_.isDark; }
  std::optional<platform::Color> accentColor() const override { return looks_.accent; }
  platform::Token observe(std::function<void()> observer) override { return observers_.add(std::move(observer)); }

 private:
  struct Looks {
    bool isDark = false;
    std::optional<platform::Color> accent;
    bool operator==(const Looks&) const = default;
  };

  // What of light and dark the user asks for.
  enum class Scheme { none, light, dark };

  void ask();
  void readAll(const Glib::VariantContainerBase& reply);
  void settingChanged(const Glib::VariantContainerBase& arguments);
  static Scheme schemeOf(std::uint32_t told);
  bool apply(std::string_view key, GVariant* value);
  void useDesktopSettings();
  Scheme desktopScheme() const;
  bool isThemeDark();
  void update();

  BusService& portal_;
  ThemeSource theme_;
  Looks looks_;
  Scheme scheme_ = Scheme::none;
  std::optional<platform::Color> accent_;
  bool isAsked_ = false;
  platform::HandlerList<void()> observers_;
  platform::Token changes_;
  platform::Token portalChanged_;
  platform::Token themeChanged_;
  bool isPortalHeard_ = false;                  // or known to be absent
  Glib::RefPtr<Gio::Settings> settings_;        // while the portal does not tell
  std::unique_ptr<ThemeSetting> themeSetting_;  // once it was needed
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::session

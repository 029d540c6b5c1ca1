#pragma once

#include <giomm/settings.h>

#include <optional>
#include <string_view>

#include "desktops/session/bus_service.h"
#include "platform/handler_list.h"
#include "platform/lifetime.h"
#include "platform/system_appearance.h"

namespace hushpane::session {

// Light or dark, and the accent, as the settings portal tells them; it is asked in the background, again whenever it
// comes, and followed. Where it does not tell of light and dark, GNOME's own setting counts, else it is light.
class PortalAppearance : public platform::SystemAppearance {
 public:
  explicit PortalAppearance(BusService& portal);

  bool isDark() const override { return looks_.isDark; }
  std::optional<platform::Color> accentColor() const override { return looks_.accent; }
  platform::Token observe(std::function<void()> observer) override { return observers_.add(std::move(observer)); }

 private:
  struct Looks {
    bool isDark = false;
    std::optional<platform::Color> accent;
    bool operator==(const Looks&) const = default;
  };

  void ask();
  void readAll(const Glib::VariantContainerBase& reply);
  void settingChanged(const Glib::VariantContainerBase& arguments);
  static bool apply(Looks& looks, std::string_view key, GVariant* value);
  void adopt(const Looks& looks);
  void useDesktopSetting();
  void readDesktopSetting();

  BusService& portal_;
  Looks looks_;
  bool isAsked_ = false;
  platform::HandlerList<void()> observers_;
  platform::Token changes_;
  platform::Token portalChanged_;
  Glib::RefPtr<Gio::Settings> settings_;  // while the portal does not tell
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::session

#include "desktops/session/portal_appearance.h"

#include <algorithm>
#include <array>
#include <utility>

#include "desktops/session/desktop_settings.h"
#include "desktops/session/portal.h"

namespace hushpane::session {

namespace {

constexpr const char* interfaceName = "org.freedesktop.portal.Settings";
constexpr const char* nameSpace = "org.freedesktop.appearance";
constexpr const char* gnomeSchema = "org.gnome.desktop.interface";
constexpr const char* schemeKey = "color-scheme";  // of both
constexpr const char* accentKey = "accent-color";

struct Unref {
  void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Variant = std::unique_ptr<GVariant, Unref>;

// Channels elsewhere than in [0, 1] say that there is none.
std::optional<platform::Color> accentIn(GVariant* value) {
  double red = 0, green = 0, blue = 0;
  g_variant_get(value, "(ddd)", &red, &green, &blue);
  const std::array channels{red, green, blue};
  if (!std::ranges::all_of(channels, [](double channel) { return channel >= 0 && channel <= 1; })) return std::nullopt;
  return platform::Color{red, green, blue};
}

}  // namespace

PortalAppearance::Scheme PortalAppearance::schemeOf(std::uint32_t told) {
  if (told == 1) return Scheme::dark;
  return told == 2 ? Scheme::light : Scheme::none;
}

PortalAppearance::PortalAppearance(BusService& portal, ThemeSource theme)
    : portal_(portal), theme_(std::move(theme)), portalChanged_(portal.onChanged([this] { ask(); })) {
  if (theme_.observe) themeChanged_ = theme_.observe([this] { update(); });
  portal_.connection() ? update() : useDesktopSettings();
}

// A portal is started for it at most once: one that ends over the question is left alone. What was known of a portal
// that went stays until another one tells.
void PortalAppearance::ask() {
  if (!portal_.isPresent() && !isAsked_) return useDesktopSettings();
  if (!portal_.isRunning() && isAsked_) return;
  isAsked_ = true;
  changes_ = portal_.onSignal(portal::path, interfaceName, "SettingChanged",
                              [this](const auto& arguments) { settingChanged(arguments); });
  const char* wanted[] = {nameSpace, nullptr};
  portal_.call(portal::path, interfaceName, "ReadAll", g_variant_new("(^as)", wanted),
               lifetime_.weak([this](const auto& reply) {
                 if (reply && reply->check_format_string("(a{sa{sv}})")) return readAll(*reply);
                 useDesktopSettings();
               }));
}

void PortalAppearance::readAll(const Glib::VariantContainerBase& reply) {
  const Variant all(g_variant_get_child_value(const_cast<GVariant*>(reply.gobj()), 0));
  const Variant values(g_variant_lookup_value(all.get(), nameSpace, G_VARIANT_TYPE_VARDICT));
  const auto take = [&](const char* key) {
    const Variant value(values ? g_variant_lookup_value(values.get(), key, nullptr) : nullptr);
    return value && apply(key, value.get());
  };
  if (!take(accentKey)) accent_.reset();
  take(schemeKey) ? update() : useDesktopSettings();
}

void PortalAppearance::settingChanged(const Glib::VariantContainerBase& arguments) {
  if (!arguments.check_format_string("(ssv)")) return;
  const char* space = nullptr;
  const char* key = nullptr;
  GVariant* held = nullptr;
  g_variant_get(const_cast<GVariant*>(arguments.gobj()), "(&s&sv)", &space, &key, &held);
  const Variant value(held);
  if (space == std::string_view(nameSpace) && apply(key, value.get())) update();
}

// False when the value says nothing that is of use here.
bool PortalAppearance::apply(std::string_view key, GVariant* value) {
  if (key == schemeKey && g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32)) {
    scheme_ = schemeOf(g_variant_get_uint32(value));
    settings_.reset();
    isPortalHeard_ = true;
    return true;
  }
  if (key == accentKey && g_variant_is_of_type(value, G_VARIANT_TYPE("(ddd)"))) {
    accent_ = accentIn(value);
    return true;
  }
  return false;
}

void PortalAppearance::useDesktopSettings() {
  isPortalHeard_ = true;
  if (!settings_) {
    settings_ = textSettings(gnomeSchema, schemeKey);
    if (settings_)
      settings_->signal_changed(schemeKey).connect(lifetime_.weak([this](const Glib::ustring&) { update(); }));
  }
  update();
}

PortalAppearance::Scheme PortalAppearance::desktopScheme() const {
  const auto text = settings_->get_string(schemeKey);
  if (text == "prefer-dark") return Scheme::dark;
  return text == "prefer-light" ? Scheme::light : Scheme::none;
}

// To read settings may take a while the first time, so they wait for the portal.
bool PortalAppearance::isThemeDark() {
  auto name = theme_.name ? theme_.name() : std::nullopt;
  if (!name && isPortalHeard_) {
    if (!themeSetting_) themeSetting_ = std::make_unique<ThemeSetting>([this] { update(); });
    name = themeSetting_->name();
  }
  return name && isDarkTheme(*name);
}

void PortalAppearance::update() {
  const auto scheme = settings_ ? desktopScheme() : scheme_;
  const Looks looks{scheme == Scheme::none ? isThemeDark() : scheme == Scheme::dark, accent_};
  if (std::exchange(looks_, looks) == looks) return;
  observers_.forEach([](const auto& observer) { observer(); });
}

}  // namespace hushpane::session

#include "desktops/session/portal_appearance.h"

#include <algorithm>
#include <array>
#include <memory>

#include "desktops/session/desktop_settings.h"
#include "desktops/session/portal.h"

namespace hushpane::session {

namespace {

constexpr const char* interfaceName = "org.freedesktop.portal.Settings";
constexpr const char* nameSpace = "org.freedesktop.appearance";
constexpr guint32 preferDark = 1;
constexpr const char* gnomeSchema = "org.gnome.desktop.interface";
constexpr const char* gnomeKey = "color-scheme";

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

PortalAppearance::PortalAppearance(BusService& portal)
    : portal_(portal), portalChanged_(portal.onChanged([this] { ask(); })) {
  if (!portal_.connection()) useDesktopSetting();
}

// A portal is started for it at most once: one that ends over the question is left alone. What was known of a portal
// that went stays until another one tells.
void PortalAppearance::ask() {
  if (!portal_.isPresent() && !isAsked_) return useDesktopSetting();
  if (!portal_.isRunning() && isAsked_) return;
  isAsked_ = true;
  changes_ = portal_.onSignal(portal::path, interfaceName, "SettingChanged",
                              [this](const auto& arguments) { settingChanged(arguments); });
  const char* wanted[] = {nameSpace, nullptr};
  portal_.call(portal::path, interfaceName, "ReadAll", g_variant_new("(^as)", wanted),
               lifetime_.weak([this](const auto& reply) {
                 if (reply && reply->check_format_string("(a{sa{sv}})")) return readAll(*reply);
                 useDesktopSetting();
               }));
}

void PortalAppearance::readAll(const Glib::VariantContainerBase& reply) {
  const Variant all(g_variant_get_child_value(const_cast<GVariant*>(reply.gobj()), 0));
  const Variant values(g_variant_lookup_value(all.get(), nameSpace, G_VARIANT_TYPE_VARDICT));
  Looks looks;
  bool tellsScheme = false;
  for (const char* key : {"color-scheme", "accent-color"}) {
    const Variant value(values ? g_variant_lookup_value(values.get(), key, nullptr) : nullptr);
    if (value && apply(looks, key, value.get()) && key == std::string_view("color-scheme")) tellsScheme = true;
  }
  if (!tellsScheme) {
    looks.isDark = looks_.isDark;
    adopt(looks);
    return useDesktopSetting();
  }
  settings_.reset();
  adopt(looks);
}

void PortalAppearance::settingChanged(const Glib::VariantContainerBase& arguments) {
  if (!arguments.check_format_string("(ssv)")) return;
  const char* space = nullptr;
  const char* key = nullptr;
  GVariant* held = nullptr;
  g_variant_get(const_cast<GVariant*>(arguments.gobj()), "(&s&sv)", &space, &key, &held);
  const Variant value(held);
  Looks looks = looks_;
  if (space == std::string_view(nameSpace) && apply(looks, key, value.get())) adopt(looks);
}

// False when the value says nothing that is of use here.
bool PortalAppearance::apply(Looks& looks, std::string_view key, GVariant* value) {
  if (key == "color-scheme" && g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32)) {
    looks.isDark = g_variant_get_uint32(value) == preferDark;
    return true;
  }
  if (key == "accent-color" && g_variant_is_of_type(value, G_VARIANT_TYPE("(ddd)"))) {
    looks.accent = accentIn(value);
    return true;
  }
  return false;
}

void PortalAppearance::adopt(const Looks& looks) {
  if (looks == looks_) return;
  looks_ = looks;
  observers_.forEach([](const auto& observer) { observer(); });
}

void PortalAppearance::useDesktopSetting() {
  if (settings_) return;
  settings_ = textSettings(gnomeSchema, gnomeKey);
  if (!settings_) return;
  settings_->signal_changed(gnomeKey).connect(lifetime_.weak([this](const Glib::ustring&) { readDesktopSetting(); }));
  readDesktopSetting();
}

void PortalAppearance::readDesktopSetting() {
  if (!settings_) return;
  Looks looks = looks_;
  looks.isDark = settings_->get_string(gnomeKey) == "prefer-dark";
  adopt(looks);
}

}  // namespace hushpane::session

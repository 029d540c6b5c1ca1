#include "desktops/session/desktop_settings.h"

#include <gio/gio.h>
#include <giomm/settingsschema.h>
#include <giomm/settingsschemakey.h>
#include <giomm/settingsschemasource.h>

#include "desktops/session/dbus_address.h"
#include "desktops/session/limited_call.h"

namespace hushpane::session {

namespace {

constexpr std::chrono::seconds longestJoin{1};

bool isTextSetting(const char* schemaId, const char* key) {
  const auto source = Gio::SettingsSchemaSource::get_default();
  const auto schema = source ? source->lookup(schemaId, true) : Glib::RefPtr<Gio::SettingsSchema>();
  if (!schema || schema->get_path().empty() || !schema->has_key(key)) return false;
  return schema->get_key(key)->get_value_type().equal(Glib::VARIANT_TYPE_STRING);
}

// The settings come over a connection that the process shares, which by default ends the process with the bus, in
// whatever thread. So it is made here first, told otherwise, and held, lest the settings make another one.
void outliveSharedBus() {
  static GDBusConnection* held = nullptr;
  if (held || !sessionBusAddress()) return;
  held = limitedCall(longestJoin, [](const auto& cancellable) {
    return g_bus_get_sync(G_BUS_TYPE_SESSION, cancellable->gobj(), nullptr);
  });
  if (held) g_dbus_connection_set_exit_on_close(held, FALSE);
}

}  // namespace

Glib::RefPtr<Gio::Settings> textSettings(const char* schemaId, const char* key) {
  if (!isTextSetting(schemaId, key)) return {};
  outliveSharedBus();
  return Gio::Settings::create(schemaId);
}

}  // namespace hushpane::session

#include "desktops/session/desktop_settings.h"

#include <gio/gio.h>
#include <giomm/settingsschema.h>
#include <giomm/settingsschemakey.h>
#include <giomm/settingsschemasource.h>

#include "desktops/session/dbus_address.h"

namespace hushpane::session {

namespace {

bool isTextSetting(const char* schemaId, const char* key) {
  const auto source = Gio::SettingsSchemaSource::get_default();
  const auto schema = source ? source->lookup(schemaId, true) : Glib::RefPtr<Gio::SettingsSchema>();
  if (!schema || schema->get_path().empty() || !schema->has_key(key)) return false;
  return schema->get_key(key)->get_value_type().equal(Glib::VARIANT_TYPE_STRING);
}

// The process shares one connection for its settings, and by default ends with it. It is held here, lest the settings
// make another one.
void outliveSharedBus() {
  static GDBusConnection* held = nullptr;
  if (held || !sessionBusAddress()) return;
  const auto joined = [](GObject*, GAsyncResult* result, gpointer) {
    GDBusConnection* connection = g_bus_get_finish(result, nullptr);
    if (connection) g_dbus_connection_set_exit_on_close(connection, FALSE);
    if (connection && held) g_object_unref(connection);
    if (!held) held = connection;
  };
  g_bus_get(G_BUS_TYPE_SESSION, nullptr, joined, nullptr);
}

}  // namespace

Glib::RefPtr<Gio::Settings> textSettings(const char* schemaId, const char* key) {
  if (!isTextSetting(schemaId, key)) return {};
  auto settings = Gio::Settings::create(schemaId);
  outliveSharedBus();
  return settings;
}

}  // namespace hushpane::session

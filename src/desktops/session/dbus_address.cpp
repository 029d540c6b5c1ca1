#include "desktops/session/dbus_address.h"

#include <gio/gio.h>

#include <cstdlib>
#include <memory>
#include <string_view>

namespace hushpane::session {

namespace {

constexpr std::string_view pathPrefix = "unix:path=";

struct Free {
  void operator()(char* text) const { g_free(text); }
};

}  // namespace

std::optional<std::string> sessionBusAddress() {
  if (const char* named = std::getenv("DBUS_SESSION_BUS_ADDRESS"); named && *named) {
    if (std::string_view(named).starts_with("autolaunch:")) return std::nullopt;
    return named;
  }
  const char* folder = std::getenv("XDG_RUNTIME_DIR");
  if (!folder || *folder != '/') return std::nullopt;
  const auto socket = std::filesystem::path(folder) / "bus";
  std::error_code error;
  if (!std::filesystem::is_socket(socket, error)) return std::nullopt;
  const std::unique_ptr<char, Free> escaped(g_dbus_address_escape_value(socket.c_str()));
  return std::string(pathPrefix) + escaped.get();
}

std::string systemBusAddress() {
  const char* named = std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
  return named && *named ? named : "unix:path=/var/run/dbus/system_bus_socket";
}

std::optional<std::filesystem::path> socketOf(const std::string& address) {
  if (!address.starts_with(pathPrefix)) return std::nullopt;
  const auto end = address.find_first_of(",;");
  const auto escaped = address.substr(pathPrefix.size(), end == std::string::npos ? end : end - pathPrefix.size());
  const std::unique_ptr<char, Free> path(g_uri_unescape_string(escaped.c_str(), nullptr));
  if (!path) return std::nullopt;
  return path.get();
}

}  // namespace hushpane::session

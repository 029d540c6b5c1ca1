#pragma once

#include <gio/gio.h>
#include <sys/prctl.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

#include "support/temporary_folder.h"

namespace hushpane::session::tests {

// Runs the main loop until the condition holds; false when the limit is over first. What happens outside the loop
// counts too.
inline bool loopUntil(const std::function<bool()>& condition, unsigned milliseconds = 8000) {
  const gint64 end = g_get_monotonic_time() + gint64{milliseconds} * 1000;
  const unsigned tick = g_timeout_add(
      2, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
  while (!condition() && g_get_monotonic_time() < end) g_main_context_iteration(nullptr, TRUE);
  g_source_remove(tick);
  return condition();
}

// A private session bus that starts no services, as the environment names it from then on.
class PrivateBus {
 public:
  PrivateBus() {
    const auto configuration = folder_ / "bus.conf";
    writeFile(configuration, "<busconfig><type>session</type><listen>unix:dir=" + folder_.path().string() +
                                 "</listen><policy context='default'><allow send_destination='*'/>"
                                 "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>");
    GSubprocessLauncher* launcher = g_subprocess_launcher_new(G_SUBPROCESS_FLAGS_STDOUT_PIPE);
    g_subprocess_launcher_set_child_setup(
        launcher, [](gpointer) { prctl(PR_SET_PDEATHSIG, SIGKILL); }, nullptr, nullptr);
    daemon_ = g_subprocess_launcher_spawn(launcher, nullptr, "dbus-daemon", "--nofork", "--config-file",
                                          configuration.c_str(), "--print-address", nullptr);
    g_object_unref(launcher);
    if (!daemon_) throw std::runtime_error("dbus-daemon is not installed");
    GDataInputStream* output = g_data_input_stream_new(g_subprocess_get_stdout_pipe(daemon_));
    char* address = g_data_input_stream_read_line(output, nullptr, nullptr, nullptr);
    setenv("DBUS_SESSION_BUS_ADDRESS", address ? address : "", 1);
    g_free(address);
    g_object_unref(output);
  }
  ~PrivateBus() {
    stop();
    g_object_unref(daemon_);
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
  }
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  void stop() {
    g_subprocess_force_exit(daemon_);
    g_subprocess_wait(daemon_, nullptr, nullptr);
  }

 private:
  TemporaryFolder folder_;
  GSubprocess* daemon_ = nullptr;
};

// A service of the desktop, played by the test.
class PlayedService {
 public:
  // Gets the method, its arguments, and who called; gives the reply, null for an error.
  using Handler = std::function<GVariant*(const std::string& method, GVariant* arguments, const std::string& caller)>;

  PlayedService(const char* name, const char* path, const char* introspection, Handler handler)
      : handler_(std::move(handler)),
        connection_(g_dbus_connection_new_for_address_sync(
            std::getenv("DBUS_SESSION_BUS_ADDRESS"),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr)) {
    if (!connection_) throw std::runtime_error("no bus to play a service on");
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(introspection, nullptr);
    static const GDBusInterfaceVTable table{called, nullptr, nullptr, {}};
    for (GDBusInterfaceInfo** interface = node->interfaces; *interface; ++interface)
      g_dbus_connection_register_object(connection_, path, *interface, &table, this, nullptr, nullptr);
    g_dbus_node_info_unref(node);
    GVariant* reply = g_dbus_connection_call_sync(connection_, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                  "org.freedesktop.DBus", "RequestName", g_variant_new("(su)", name, 4),
                                                  nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    g_variant_unref(reply);
  }
  ~PlayedService() {
    g_dbus_connection_close_sync(connection_, nullptr, nullptr);
    g_object_unref(connection_);
  }
  PlayedService(const PlayedService&) = delete;
  PlayedService& operator=(const PlayedService&) = delete;

  void emit(const std::string& path, const char* interface, const char* member, GVariant* arguments) {
    g_dbus_connection_emit_signal(connection_, nullptr, path.c_str(), interface, member, arguments, nullptr);
  }

 private:
  static void called(GDBusConnection*, const char* caller, const char*, const char*, const char* method,
                     GVariant* arguments, GDBusMethodInvocation* invocation, gpointer self) {
    GVariant* reply = static_cast<PlayedService*>(self)->handler_(method, arguments, caller);
    if (reply) return g_dbus_method_invocation_return_value(invocation, reply);
    g_dbus_method_invocation_return_dbus_error(invocation, "org.freedesktop.DBus.Error.Failed", "played");
  }

  Handler handler_;
  GDBusConnection* connection_;
};

}  // namespace hushpane::session::tests

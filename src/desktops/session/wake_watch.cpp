#include "desktops/session/wake_watch.h"

#include <glibmm/variant.h>

#include <utility>

#include "desktops/session/dbus_address.h"
#include "desktops/shared/debug_log.h"

namespace hushpane::session {

WakeWatch::WakeWatch(platform::NotificationCenter& center) : center_(center) {
  const auto joined = lifetime_.weak([this](const Glib::RefPtr<Gio::AsyncResult>& result) {
    try {
      watch(Gio::DBus::Connection::create_for_address_finish(result));
    } catch (const Glib::Error& error) {
      desktops::debugLog(std::string("no system bus: ") + error.what());
    }
  });
  Gio::DBus::Connection::create_for_address(
      systemBusAddress(), joined,
      Gio::DBus::ConnectionFlags::AUTHENTICATION_CLIENT | Gio::DBus::ConnectionFlags::MESSAGE_BUS_CONNECTION);
}

WakeWatch::~WakeWatch() {
  if (bus_) bus_->signal_unsubscribe(subscription_);
}

void WakeWatch::watch(Glib::RefPtr<Gio::DBus::Connection> bus) {
  bus_ = std::move(bus);
  bus_->set_exit_on_close(false);
  auto received = lifetime_.weak([this](const Glib::VariantContainerBase& arguments) { preparesForSleep(arguments); });
  subscription_ = bus_->signal_subscribe(
      [received](const Glib::RefPtr<Gio::DBus::Connection>&, const Glib::ustring&, const Glib::ustring&,
                 const Glib::ustring&, const Glib::ustring&,
                 const Glib::VariantContainerBase& arguments) mutable { received(arguments); },
      "org.freedesktop.login1", "org.freedesktop.login1.Manager", "PrepareForSleep", "/org/freedesktop/login1");
}

// The signal comes before sleep with true and after it with false.
void WakeWatch::preparesForSleep(const Glib::VariantContainerBase& arguments) {
  if (!arguments.check_format_string("(b)")) return;
  Glib::Variant<bool> isBefore;
  arguments.get_child(isBefore);
  if (!isBefore.get()) center_.post(platform::notification::didWake);
}

}  // namespace hushpane::session

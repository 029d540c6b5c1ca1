#include "desktops/session/dbus_session.h"

#include <giomm/init.h>

#include <chrono>
#include <utility>

#include "desktops/session/dbus_address.h"
#include "desktops/session/limited_call.h"
#include "desktops/shared/debug_log.h"

namespace hushpane::session {

namespace {

constexpr std::chrono::seconds longestJoin{2};
constexpr double secondsToRejoin = 1;           // after the bus went
constexpr double secondsAfterSocketNews = 0.1;  // a socket is made before someone listens there

const auto flags =
    Gio::DBus::ConnectionFlags::AUTHENTICATION_CLIENT | Gio::DBus::ConnectionFlags::MESSAGE_BUS_CONNECTION;

DbusSession::Connection join(const std::string& address) {
  return limitedCall(longestJoin, [&address](const auto& cancellable) -> DbusSession::Connection {
    try {
      return Gio::DBus::Connection::create_for_address_sync(address, cancellable, flags);
    } catch (const Glib::Error& error) {
      desktops::debugLog(std::string("no session bus: ") + error.what());
      return {};
    }
  });
}

}  // namespace

DbusSession::DbusSession(platform::MainQueue& queue) : queue_(queue), address_(sessionBusAddress()) {
  if (!address_) return;
  Gio::init();
  if (auto connection = join(*address_)) adopt(std::move(connection));
}

DbusSession::~DbusSession() {
  closed_.disconnect();
}

platform::Token DbusSession::onRejoined(std::function<void()> handler) {
  return rejoined_.add(std::move(handler));
}

void DbusSession::emitSignal(std::string_view member) {
  if (!connection_) return;
  try {
    connection_->emit_signal(dbusName::path, dbusName::interface, std::string(member));
  } catch (const Glib::Error& error) {
    desktops::debugLog(std::string("cannot send a signal: ") + error.what());
  }
}

void DbusSession::flush() {
  if (!connection_) return;
  try {
    connection_->flush_sync();
  } catch (const Glib::Error& error) {
    desktops::debugLog(std::string("cannot reach the session bus: ") + error.what());
  }
}

void DbusSession::adopt(Connection connection) {
  connection_ = std::move(connection);
  connection_->set_exit_on_close(false);
  closed_ = connection_->property_closed().signal_changed().connect([this] { lose(); });
}

void DbusSession::lose() {
  closed_.disconnect();
  connection_.reset();
  if (const auto socket = socketOf(*address_))
    socketWatch_.emplace(*socket, [this] { scheduleRejoin(secondsAfterSocketNews); });
  scheduleRejoin(secondsToRejoin);
}

void DbusSession::scheduleRejoin(double seconds) {
  rejoin_ = queue_.after(seconds, [this] { rejoin(); });
}

void DbusSession::rejoin() {
  const auto finish = lifetime_.weak([this](const Glib::RefPtr<Gio::AsyncResult>& result) {
    if (connection_) return;
    try {
      adopt(Gio::DBus::Connection::create_for_address_finish(result));
    } catch (const Glib::Error&) {
      return;  // the watch tells when to try again
    }
    socketWatch_.reset();
    rejoined_.forEach([](const auto& handler) { handler(); });
  });
  Gio::DBus::Connection::create_for_address(*address_, finish, flags);
}

}  // namespace hushpane::session

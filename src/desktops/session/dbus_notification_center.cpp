#include "desktops/session/dbus_notification_center.h"

#include <gio/gio.h>

#include <optional>
#include <utility>

namespace hushpane::session {

namespace {

constexpr std::string_view prefix = "com.corvane.Hushpane.";

// The signal that stands for a notification; nothing when none can.
std::optional<std::string> memberOf(std::string_view name) {
  if (!name.starts_with(prefix)) return std::nullopt;
  const std::string member(name.substr(prefix.size()));
  if (!g_dbus_is_member_name(member.c_str()) || member.find('\0') != std::string::npos) return std::nullopt;
  return member;
}

}  // namespace

DbusNotificationCenter::DbusNotificationCenter(DbusSession& session, platform::MainQueue& queue)
    : session_(session), queue_(queue), rejoined_(session.onRejoined([this] { subscribeAgain(); })) {}

DbusNotificationCenter::~DbusNotificationCenter() {
  for (const auto& [name, subscription] : subscriptions_)
    if (subscription != 0 && session_.connection()) session_.connection()->signal_unsubscribe(subscription);
}

platform::Token DbusNotificationCenter::addObserver(std::string_view name, std::function<void()> handler) {
  if (memberOf(name) && !subscriptions_.contains(name)) subscribe(std::string(name));
  return NotificationCenter::addObserver(name, std::move(handler));
}

void DbusNotificationCenter::post(std::string_view name) {
  const auto member = memberOf(name);
  if (member && session_.connection()) return session_.emitSignal(*member);
  queue_.async(lifetime_.weak([this, name = std::string(name)] { NotificationCenter::post(name); }));
}

void DbusNotificationCenter::subscribe(const std::string& name) {
  unsigned& subscription = subscriptions_[name];
  subscription = 0;
  if (!session_.connection()) return;
  auto received = lifetime_.weak([this, name](auto&&...) { NotificationCenter::post(name); });
  subscription = session_.connection()->signal_subscribe(
      [received](const DbusSession::Connection&, const Glib::ustring&, const Glib::ustring&, const Glib::ustring&,
                 const Glib::ustring&, const Glib::VariantContainerBase&) mutable { received(); },
      {}, dbusName::interface, *memberOf(name), dbusName::path);
}

void DbusNotificationCenter::subscribeAgain() {
  for (const auto& entry : std::map(subscriptions_)) subscribe(entry.first);
}

}  // namespace hushpane::session

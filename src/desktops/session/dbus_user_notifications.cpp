#include "desktops/session/dbus_user_notifications.h"

#include <glibmm/markup.h>

#include <utility>
#include <vector>

namespace hushpane::session {

namespace {

constexpr const char* serverName = "org.freedesktop.Notifications";
constexpr const char* serverPath = "/org/freedesktop/Notifications";
constexpr const char* defaultAction = "default";  // a click on the message itself
constexpr const char* linkAction = "link";
constexpr int serversOwnTime = -1;

std::set<std::string> namesIn(const Glib::VariantContainerBase& reply) {
  if (!reply.check_format_string("(as)")) return {};
  Glib::Variant<std::vector<Glib::ustring>> names;
  reply.get_child(names);
  std::set<std::string> found;
  for (const auto& name : names.get()) found.insert(name.raw());
  return found;
}

// A text that the bus takes, without what it does not.
std::string clean(const std::string& text) {
  const Glib::ustring valid = Glib::ustring(text).make_valid();
  return valid.raw().substr(0, valid.raw().find('\0'));
}

GVariant* actionsFor(const platform::UserNotification& notification, bool canAct) {
  GVariantBuilder actions;
  g_variant_builder_init(&actions, G_VARIANT_TYPE_STRING_ARRAY);
  if (canAct && !notification.link.empty()) {
    const auto title = clean(notification.linkTitle);
    for (const char* text : {defaultAction, title.c_str(), linkAction, title.c_str()})
      g_variant_builder_add(&actions, "s", text);
  }
  return g_variant_builder_end(&actions);
}

GVariant* hints() {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
  g_variant_builder_add(&builder, "{sv}", "desktop-entry", g_variant_new_string("com.corvane.Hushpane"));
  return g_variant_builder_end(&builder);
}

}  // namespace

DbusUserNotifications::DbusUserNotifications(DbusSession& session, UrlOpener& urls, platform::MainQueue& queue)
    : server_(session, serverName), urls_(urls), queue_(queue), serverChanged_(server_.onChanged([this] {
        // Another server counts anew, and may have that number for a message of somebody else.
        if (!server_.isRunning()) shown_ = 0;
      })) {}

void DbusUserNotifications::post(platform::UserNotification notification, std::function<void(bool)> completion) {
  waiting_.push_back({std::move(notification), std::move(completion)});
  if (waiting_.size() == 1) queue_.async(lifetime_.weak([this] { sendNext(); }));
}

void DbusUserNotifications::sendNext() {
  if (!server_.connection()) return sent(std::nullopt);
  server_.call(serverPath, serverName, "GetCapabilities", nullptr, lifetime_.weak([this](const auto& reply) {
    if (reply && server_.connection()) return send(namesIn(*reply));
    sent(std::nullopt);
  }));
}

void DbusUserNotifications::send(const std::set<std::string>& capabilities) {
  const auto& notification = waiting_.front().notification;
  const auto plain = clean(notification.body);
  const auto body = capabilities.contains("body-markup") ? Glib::Markup::escape_text(plain).raw() : plain;
  listen();
  server_.call(
      serverPath, serverName, "Notify",
      g_variant_new("(susss@as@a{sv}i)", "Hushpane", shown_, "com.corvane.Hushpane", clean(notification.title).c_str(),
                    body.c_str(), actionsFor(notification, capabilities.contains("actions")), hints(), serversOwnTime),
      lifetime_.weak([this](const auto& reply) { sent(reply); }));
}

void DbusUserNotifications::sent(const std::optional<Glib::VariantContainerBase>& reply) {
  const bool isShown = reply && reply->check_format_string("(u)");
  const auto post = std::move(waiting_.front());
  waiting_.pop_front();
  if (isShown) {
    g_variant_get(const_cast<GVariant*>(reply->gobj()), "(u)", &shown_);
    link_ = post.notification.link;
  }
  if (!waiting_.empty()) queue_.async(lifetime_.weak([this] { sendNext(); }));
  if (post.completion) post.completion(isShown);
}

void DbusUserNotifications::listen() {
  actions_ = server_.onSignal(serverPath, serverName, "ActionInvoked",
                              [this](const auto& arguments) { actionInvoked(arguments); });
}

void DbusUserNotifications::actionInvoked(const Glib::VariantContainerBase& arguments) {
  if (!arguments.check_format_string("(us)")) return;
  std::uint32_t number = 0;
  const char* action = nullptr;
  g_variant_get(const_cast<GVariant*>(arguments.gobj()), "(u&s)", &number, &action);
  const std::string invoked = action;
  if (number == shown_ && shown_ != 0 && (invoked == defaultAction || invoked == linkAction)) urls_.open(link_);
}

}  // namespace hushpane::session

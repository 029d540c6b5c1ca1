#include "desktops/session/bus_service.h"

#include <cstring>
#include <memory>
#include <utility>

#include "desktops/shared/debug_log.h"

namespace hushpane::session {

namespace {

constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

using SignalSlot = Gio::DBus::Connection::SlotSignal;

platform::Token subscribe(const DbusSession::Connection& connection, const char* sender, const char* path,
                          const char* interface, const char* member, const std::string& argument,
                          BusService::SignalHandler handler) {
  // Dropping the token inside the handler lets the round end before the handler goes.
  const auto held = std::make_shared<BusService::SignalHandler>(std::move(handler));
  const SignalSlot slot = [weak = std::weak_ptr(held)](const DbusSession::Connection&, const Glib::ustring&,
                                                       const Glib::ustring&, const Glib::ustring&, const Glib::ustring&,
                                                       const Glib::VariantContainerBase& arguments) {
    if (const auto kept = weak.lock()) (*kept)(arguments);
  };
  const unsigned id = connection->signal_subscribe(slot, sender, interface, member, path, argument);
  return platform::Token([connection, id, held = held]() mutable {
    connection->signal_unsubscribe(id);
    held.reset();
  });
}

bool contains(const Glib::VariantContainerBase& reply, const std::string& name) {
  if (!reply.check_format_string("(as)")) return false;
  Glib::Variant<std::vector<Glib::ustring>> names;
  reply.get_child(names);
  for (const auto& listed : names.get())
    if (listed.raw() == name) return true;
  return false;
}

}  // namespace

BusService::BusService(DbusSession& session, std::string name)
    : session_(session), name_(std::move(name)), rejoined_(session.onRejoined([this] { follow(); })) {
  follow();
}

BusService::~BusService() = default;

void BusService::follow() {
  isRunning_ = isStartable_ = false;
  ownerSignal_.reset();
  if (!connection()) return;
  ownerSignal_ = subscribe(connection(), busName, busPath, busName, "NameOwnerChanged", name_,
                           [this](const auto& arguments) { ownerChanged(arguments); });
  askBus("ListActivatableNames", nullptr,
         [this](const auto& reply) { isStartable_ = reply && contains(*reply, name_); });
  askBus("GetNameOwner", g_variant_new("(s)", name_.c_str()), [this](const auto& reply) {
    isRunning_ = reply.has_value();
    changed_.forEach([](const auto& handler) { handler(); });
  });
}

void BusService::ownerChanged(const Glib::VariantContainerBase& arguments) {
  if (!arguments.check_format_string("(sss)")) return;
  Glib::Variant<Glib::ustring> owner;
  arguments.get_child(owner, 2);
  isRunning_ = !owner.get().empty();
  changed_.forEach([](const auto& handler) { handler(); });
}

void BusService::call(const char* path, const char* interface, const char* method, GVariant* arguments, Reply reply) {
  callOn(name_.c_str(), path, interface, method, arguments, std::move(reply));
}

void BusService::askBus(const char* method, GVariant* arguments, Reply reply) {
  callOn(busName, busPath, busName, method, arguments, std::move(reply));
}

void BusService::callOn(const char* name, const char* path, const char* interface, const char* method,
                        GVariant* arguments, Reply reply) {
  const Glib::VariantContainerBase tuple(arguments ? arguments : g_variant_new("()"), false);
  const auto finish =
      lifetime_.weak([reply = std::move(reply), connection = connection(),
                      method = std::string(method)](const Glib::RefPtr<Gio::AsyncResult>& result) mutable {
        std::optional<Glib::VariantContainerBase> answer;
        try {
          answer = connection->call_finish(result);
        } catch (const Glib::Error& error) {
          desktops::debugLog(method + " failed: " + error.what());
        }
        const auto taken = std::exchange(reply, nullptr);
        if (taken) taken(std::move(answer));
      });
  connection()->call(path, interface, method, tuple, finish, name);
}

platform::Token BusService::onSignal(const char* path, const char* interface, const char* member,
                                     SignalHandler handler) {
  return subscribe(connection(), name_.c_str(), path, interface, member, {}, std::move(handler));
}

}  // namespace hushpane::session

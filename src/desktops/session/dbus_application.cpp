#include "desktops/session/dbus_application.h"

#include <giomm/dbuserror.h>
#include <giomm/dbusintrospection.h>
#include <giomm/error.h>
#include <glibmm/variant.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

#include "desktops/shared/debug_log.h"

namespace hushpane::session {

namespace {

using DBusError = Gio::DBus::Error;

constexpr const char* interfaceName = "org.freedesktop.Application";
constexpr const char* introspection = R"(
<node>
  <interface name="org.freedesktop.Application">
    <method name="Activate">
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
    <method name="Open">
      <arg type="as" name="uris" direction="in"/>
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
    <method name="ActivateAction">
      <arg type="s" name="action_name" direction="in"/>
      <arg type="av" name="parameter" direction="in"/>
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
  </interface>
</node>)";

constexpr std::size_t mostUrls = 1000;       // in one request to open
constexpr std::size_t mostBytes = 1u << 20;  // of one request to open
constexpr int answerMilliseconds = 10'000;
constexpr int claimAttempts = 5;

// Answers of org.freedesktop.DBus.RequestName.
constexpr std::uint32_t doNotQueue = 4;
constexpr std::uint32_t primaryOwner = 1;
constexpr std::uint32_t alreadyOwner = 4;

Glib::VariantContainerBase nameRequest() {
  return Glib::VariantContainerBase::create_tuple(
      {Glib::Variant<Glib::ustring>::create(dbusName::bus), Glib::Variant<std::uint32_t>::create(doNotQueue)});
}

// Without a bus, or one that does not answer, nobody else can be asked: the name counts as ours.
bool ownsName(const DbusSession& session) {
  if (!session.connection()) return true;
  try {
    const auto reply = session.connection()->call_sync("/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                                                       nameRequest(), "org.freedesktop.DBus", answerMilliseconds);
    Glib::Variant<std::uint32_t> result;
    reply.get_child(result);
    return result.get() == primaryOwner || result.get() == alreadyOwner;
  } catch (const Glib::Error& error) {
    desktops::debugLog(std::string("cannot ask for the program's name: ") + error.what());
    return true;
  }
}

void forward(const DbusSession& session, const std::vector<std::string>& urls) {
  std::vector<Glib::ustring> texts;
  for (const auto& url : urls)
    if (const Glib::ustring text(url); text.validate()) texts.push_back(text);
  const auto platformData = Glib::Variant<std::map<Glib::ustring, Glib::VariantBase>>::create({});
  const auto arguments = urls.empty() ? Glib::VariantContainerBase::create_tuple(platformData)
                                      : Glib::VariantContainerBase::create_tuple(
                                            {Glib::Variant<std::vector<Glib::ustring>>::create(texts), platformData});
  session.connection()->call_sync(dbusName::path, interfaceName, urls.empty() ? "Activate" : "Open", arguments,
                                  dbusName::bus, answerMilliseconds, Gio::DBus::CallFlags::NO_AUTO_START);
}

// True for errors that mean that the other instance ended before it could answer.
bool hasEnded(const DBusError& error) {
  return error.code() == DBusError::SERVICE_UNKNOWN || error.code() == DBusError::NAME_HAS_NO_OWNER ||
         error.code() == DBusError::NO_REPLY;
}

}  // namespace

DbusApplication::DbusApplication(DbusSession& session, platform::MainQueue& queue)
    : session_(session),
      queue_(queue),
      table_([this](const Glib::RefPtr<Gio::DBus::Connection>&, const Glib::ustring&, const Glib::ustring&,
                    const Glib::ustring&, const Glib::ustring& method, const Glib::VariantContainerBase& arguments,
                    const Invocation& invocation) { handleCall(method, arguments, invocation); }),
      rejoined_(session.onRejoined([this] { reclaim(); })) {
  serve();
}

DbusApplication::~DbusApplication() {
  if (registration_ != 0 && session_.connection()) session_.connection()->unregister_object(registration_);
}

DbusApplication::Claim DbusApplication::claim(std::vector<std::string> urls) {
  for (int attempt = 0; attempt < claimAttempts; ++attempt) {
    if (ownsName(session_)) {
      if (!urls.empty()) open(std::move(urls));
      return Claim::first;
    }
    try {
      forward(session_, urls);
      return Claim::handedOver;
    } catch (const DBusError& error) {
      if (!hasEnded(error)) return Claim::unanswered;
    } catch (const Glib::Error&) {
      return Claim::unanswered;
    }
  }
  return Claim::unanswered;
}

void DbusApplication::setOpenUrlsHandler(std::function<void(std::vector<std::string>)> handler) {
  handler_ = std::move(handler);
  if (!waiting_.empty()) queue_.async(lifetime_.weak([this] { deliver(); }));
}

void DbusApplication::terminate() {
  queue_.async(lifetime_.weak([this] {
    if (const auto terminate = terminate_) terminate();
  }));
}

void DbusApplication::setReopenHandler(std::function<void()> handler) {
  reopenHandler_ = std::move(handler);
  if (std::exchange(isReopenWaiting_, false)) reopen();
}

void DbusApplication::reopen() {
  if (!reopenHandler_) {
    isReopenWaiting_ = true;
    return;
  }
  queue_.async(lifetime_.weak([this] {
    if (const auto handler = reopenHandler_) handler();
  }));
}

// Served before the name is ours, so that no request comes too early.
void DbusApplication::serve() {
  registration_ = 0;
  if (!session_.connection()) return;
  try {
    static const auto node = Gio::DBus::NodeInfo::create_for_xml(introspection);
    registration_ =
        session_.connection()->register_object(dbusName::path, node->lookup_interface(interfaceName), table_);
  } catch (const Glib::Error& error) {
    desktops::debugLog(std::string("cannot serve the bus: ") + error.what());
  }
}

// Nothing is shown twice by then: another instance that came meanwhile keeps the name.
void DbusApplication::reclaim() {
  serve();
  session_.connection()->call("/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName", nameRequest(), {},
                              "org.freedesktop.DBus");
}

void DbusApplication::handleCall(const Glib::ustring& method, const Glib::VariantContainerBase& arguments,
                                 const Invocation& invocation) {
  if (method == "Open") return handleOpen(arguments, invocation);
  if (method == "Activate") {
    invocation->return_value({});
    return reopen();
  }
  invocation->return_dbus_error("org.freedesktop.DBus.Error.InvalidArgs", "There is no such action");
}

void DbusApplication::handleOpen(const Glib::VariantContainerBase& arguments, const Invocation& invocation) {
  Glib::Variant<std::vector<Glib::ustring>> list;
  arguments.get_child(list, 0);
  if (arguments.get_size() > mostBytes || list.get_n_children() > mostUrls)
    return invocation->return_dbus_error("org.freedesktop.DBus.Error.LimitsExceeded", "Too many URLs");
  std::vector<std::string> urls;
  for (const auto& url : list.get()) urls.push_back(url.raw());
  invocation->return_value({});
  open(std::move(urls));
}

void DbusApplication::open(std::vector<std::string> urls) {
  waiting_.push_back(std::move(urls));
  if (handler_) queue_.async(lifetime_.weak([this] { deliver(); }));
}

void DbusApplication::deliver() {
  for (auto& urls : std::exchange(waiting_, {})) {
    const auto handler = handler_;
    handler(std::move(urls));
  }
}

}  // namespace hushpane::session

#pragma once

#include <glib.h>
#include <glibmm/variant.h>

#include <functional>
#include <string>

#include "desktops/session/dbus_session.h"
#include "platform/handler_list.h"
#include "platform/lifetime.h"

namespace hushpane::session {

// A service of the desktop on the session bus, and whether it is there, which is asked in the background at the start
// and followed from then on. Main thread only.
class BusService {
 public:
  // Nothing when the call failed, the service being missing included.
  using Reply = std::function<void(std::optional<Glib::VariantContainerBase>)>;
  using SignalHandler = std::function<void(const Glib::VariantContainerBase& arguments)>;

  BusService(DbusSession& session, std::string name);
  ~BusService();
  BusService(const BusService&) = delete;
  BusService& operator=(const BusService&) = delete;

  // Null while there is no bus.
  const DbusSession::Connection& connection() const { return session_.connection(); }
  // False until the bus has told.
  bool isRunning() const { return connection() && isRunning_; }
  // Whether a call finds it: it runs, or the bus starts it for the call.
  bool isPresent() const { return connection() && (isRunning_ || isStartable_); }

  // Called when it is known for the first time whether the service is there, and after it came, went, or was replaced.
  platform::Token onChanged(std::function<void()> handler) { return changed_.add(std::move(handler)); }

  // Calls a method with that tuple of arguments, which is consumed if floating. The reply follows from the main loop,
  // unless this object ends before.
  void call(const char* path, const char* interface, const char* method, GVariant* arguments, Reply reply);
  // Follows a signal of the service until the token is dropped or the bus is lost.
  platform::Token onSignal(const char* path, const char* interface, const char* member, SignalHandler handler);

 private:
  void follow();
  void ownerChanged(const Glib::VariantContainerBase& arguments);
  void askBus(const char* method, GVariant* arguments, Reply reply);
  void callOn(const char* name, const char* path, const char* interface, const char* method, GVariant* arguments,
              Reply reply);

  DbusSession& session_;
  std::string name_;
  bool isRunning_ = false;
  bool isStartable_ = false;
  platform::Token ownerSignal_;
  platform::HandlerList<void()> changed_;
  platform::Token rejoined_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::session

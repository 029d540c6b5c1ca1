#pragma once

#include <giomm/dbusconnection.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "desktops/shared/file_watch.h"
#include "platform/handler_list.h"
#include "platform/lifetime.h"
#include "platform/main_queue.h"

namespace hushpane::session {

namespace dbusName {
inline constexpr const char* bus = "com.corvane.Hushpane";
inline constexpr const char* interface = "com.corvane.Hushpane";
inline constexpr const char* path = "/com/corvane/Hushpane";
}  // namespace dbusName

// The program's connection to the session bus. Everything works without one. A bus that goes away is missed quietly; it
// is joined again as soon as its socket is there again, which costs nothing meanwhile. A bus that comes back under
// another address, or comes first after the program started, is joined at the next start. Main thread only.
class DbusSession {
 public:
  using Connection = Glib::RefPtr<Gio::DBus::Connection>;

  // Joins the bus before it returns; gives up on one that does not answer.
  explicit DbusSession(platform::MainQueue& queue);
  ~DbusSession();
  DbusSession(const DbusSession&) = delete;
  DbusSession& operator=(const DbusSession&) = delete;

  // Null while there is no bus.
  const Connection& connection() const { return connection_; }

  // Called whenever the bus was joined again. What was set up on the old connection is gone then.
  platform::Token onRejoined(std::function<void()> handler);

  // Sends a signal of the program's interface, without arguments; nothing happens without a bus.
  void emitSignal(std::string_view member);
  // Waits until all that was sent has left the process, as is needed before it ends.
  void flush();

 private:
  void adopt(Connection connection);
  void lose();
  void scheduleRejoin(double seconds);
  void rejoin();

  platform::MainQueue& queue_;
  std::optional<std::string> address_;
  Connection connection_;
  sigc::connection closed_;
  std::optional<desktops::FileWatch> socketWatch_;
  platform::WorkItem rejoin_;
  platform::HandlerList<void()> rejoined_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::session

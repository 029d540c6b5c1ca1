#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/handler_list.h"
#include "platform/token.h"

namespace hushpane::x11 {

enum class Extension { randr, composite, damage, render, shape, xfixes, xinput, res, xkb };

struct ExtensionInfo {
  std::uint8_t majorOpcode = 0;
  std::uint8_t firstEvent = 0;
  std::uint8_t firstError = 0;
};

// The connection to the X server. Requests are sent unchecked: an object that vanished meanwhile is normal, so errors
// are only logged. Main thread only; outlives everything that holds an object of the server.
class Connection {
 public:
  // The display named, or $DISPLAY when null. Nothing when it cannot be opened.
  static std::unique_ptr<Connection> open(const char* displayName);

  Connection(xcb_connection_t* connection, int screenNumber);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  xcb_connection_t* get() const { return connection_.get(); }
  xcb_window_t root() const { return screen_->root; }
  const xcb_screen_t& screen() const { return *screen_; }
  int screenNumber() const { return screenNumber_; }
  std::uint32_t newId() { return xcb_generate_id(get()); }

  // Interned on first use; the names that the program always needs cost no round trip.
  xcb_atom_t atom(std::string_view name);

  // Nothing when the server lacks it.
  std::optional<ExtensionInfo> extension(Extension extension) const;

  // Adds to the events that the root window reports to this program.
  void selectRootEvents(std::uint32_t mask);

  // Every event goes to every handler, in the order of registration. Errors do not.
  platform::Token addEventHandler(std::function<void(const xcb_generic_event_t&)> handler);
  platform::Token addErrorHandler(std::function<void(const xcb_generic_error_t&)> handler);

  // Hands on everything that has arrived and returns whether there was anything. Never waits.
  bool dispatchPending();
  // True when an event waits in memory, where polling the socket would not see it.
  bool hasQueuedEvent();

  bool isBroken() const { return xcb_connection_has_error(get()) != 0; }
  void flush() { xcb_flush(get()); }

 private:
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };
  void prefetchAtoms();
  void loadExtensions();
  void deliver(const xcb_generic_event_t& event);

  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  int screenNumber_;
  const xcb_screen_t* screen_;
  std::map<std::string, xcb_atom_t, std::less<>> atoms_;
  std::map<Extension, ExtensionInfo> extensions_;
  std::uint32_t rootEvents_ = 0;
  xcb_generic_event_t* queued_ = nullptr;
  platform::HandlerList<void(const xcb_generic_event_t&)> handlers_;
  platform::HandlerList<void(const xcb_generic_error_t&)> errorHandlers_;
};

}  // namespace hushpane::x11

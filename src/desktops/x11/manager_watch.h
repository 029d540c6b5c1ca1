#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "desktops/x11/connection.h"
#include "platform/handler_list.h"
#include "platform/main_queue.h"

namespace hushpane::x11 {

// Knows the window manager by what it publishes (EWMH, "Root Window Properties"). Managers without it are not seen.
class ManagerWatch {
 public:
  ManagerWatch(Connection& connection, platform::MainQueue& queue);

  bool isRunning() const { return checkWindow_ != XCB_WINDOW_NONE; }
  // By which it tells that it runs; none without a manager.
  xcb_window_t window() const { return checkWindow_; }
  // Whether it says that it understands that hint.
  bool supports(std::string_view hint) const;
  // Whether the manager itself has made the window, so that it is the same program.
  bool owns(xcb_window_t window) const;

  // Whether it composites by itself and paints the frames of windows only then, so that the server's pixels of them are
  // none of its own.
  bool paintsFrames(xcb_window_t compositor) const { return owns(compositor) && name_ == "KWin"; }

  // Called when another manager has taken over, when it is gone, and when it understands other hints than before.
  platform::Token addChangeHandler(std::function<void()> handler) { return handlers_.add(std::move(handler)); }

 private:
  void handle(const xcb_generic_event_t& event);
  void read();
  xcb_window_t readCheckWindow();

  Connection& connection_;
  platform::MainQueue& queue_;
  xcb_window_t checkWindow_ = XCB_WINDOW_NONE;
  std::string name_;
  std::set<xcb_atom_t> supported_;
  platform::WorkItem reading_;
  platform::HandlerList<void()> handlers_;
  platform::Token events_;
};

}  // namespace hushpane::x11

#pragma once

#include <functional>

#include "desktops/x11/connection.h"
#include "desktops/x11/manager_watch.h"
#include "desktops/x11/window_tree.h"
#include "platform/handler_list.h"
#include "platform/main_queue.h"

namespace hushpane::x11 {

// The application's window that is worked in: the one that the window manager publishes (EWMH), or the one that has the
// keyboard where no manager publishes anything.
class ActiveWindow {
 public:
  ActiveWindow(Connection& connection, platform::MainQueue& queue, ManagerWatch& manager, WindowTree& tree);

  // Nothing while the manager changes from one to the next, too.
  xcb_window_t get();
  // Whether the server knows of no later one. A round trip.
  bool isLatest() { return !manager_.isRunning() || readPublished() == get(); }
  // Called when it may have become another one.
  platform::Token addChangeHandler(std::function<void()> handler) { return handlers_.add(std::move(handler)); }

 private:
  void handle(const xcb_generic_event_t& event);
  void invalidate();
  xcb_window_t readPublished() const;
  xcb_window_t readFocused();
  xcb_window_t childUnderPointer() const;
  xcb_window_t topLevelAround(xcb_window_t window) const;

  Connection& connection_;
  platform::MainQueue& queue_;
  ManagerWatch& manager_;
  WindowTree& tree_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  bool isKnown_ = false;
  platform::WorkItem notice_;
  platform::HandlerList<void()> handlers_;
  platform::Token events_;
  platform::Token managerChanges_;
};

}  // namespace hushpane::x11

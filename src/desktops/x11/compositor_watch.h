#pragma once

#include <functional>
#include <string>

#include "desktops/x11/connection.h"
#include "platform/handler_list.h"
#include "platform/main_queue.h"

namespace hushpane::x11 {

// Knows whether a compositing manager shows the desktop, and whether it offers to blur behind windows.
class CompositorWatch {
 public:
  CompositorWatch(Connection& connection, platform::MainQueue& queue);

  // True once a compositor has had the time to take over; false at once when it is gone.
  bool isRunning() const { return isRunning_; }
  // The window that a compositor owns its selection with, none without one.
  xcb_window_t owner() const { return owner_; }
  bool blursBehindWindows() const { return isRunning_ && blurs_; }

  // Called at each change, while events are being handled.
  platform::Token addChangeHandler(std::function<void()> handler) { return handlers_.add(std::move(handler)); }

 private:
  void handle(const xcb_generic_event_t& event);
  void ownerChanged(xcb_window_t owner);
  void setRunning(bool isRunning);
  bool readBlur();

  Connection& connection_;
  platform::MainQueue& queue_;
  xcb_atom_t selection_;
  xcb_window_t owner_ = XCB_WINDOW_NONE;
  bool isRunning_ = false;
  bool blurs_ = false;
  platform::WorkItem start_;
  platform::HandlerList<void()> handlers_;
  platform::Token events_;
};

}  // namespace hushpane::x11

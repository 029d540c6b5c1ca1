#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "desktops/x11/connection.h"
#include "platform/handler_list.h"

namespace hushpane::x11 {

// The workspace that the window manager shows (EWMH, _NET_CURRENT_DESKTOP).
class CurrentWorkspace {
 public:
  explicit CurrentWorkspace(Connection& connection);

  // Nothing when the window manager does not tell.
  std::optional<std::uint32_t> get() const { return workspace_; }
  // Called when another one is shown, while events are being handled.
  platform::Token addChangeHandler(std::function<void()> handler) { return handlers_.add(std::move(handler)); }

 private:
  void handle(const xcb_generic_event_t& event);

  Connection& connection_;
  std::optional<std::uint32_t> workspace_;
  platform::HandlerList<void()> handlers_;
  platform::Token events_;
};

}  // namespace hushpane::x11

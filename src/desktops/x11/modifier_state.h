#pragma once

#include <optional>

#include "desktops/x11/connection.h"
#include "platform/event_monitors.h"

namespace hushpane::x11 {

// Follows the modifiers of the core keyboard, whatever key or device set them.
// The server tells of each change right after the raw event of the key that caused it and before any later key.
class ModifierState {
 public:
  explicit ModifierState(Connection& connection);

  platform::ModifierFlags flags() const { return flags_; }

  // Takes an event of the server; true when the flags changed with it.
  bool handle(const xcb_generic_event_t& event);

 private:
  std::optional<ExtensionInfo> xkb_;
  platform::ModifierFlags flags_ = 0;
};

}  // namespace hushpane::x11

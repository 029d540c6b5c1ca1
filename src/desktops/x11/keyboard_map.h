#pragma once

#include <bitset>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "desktops/x11/connection.h"
#include "platform/handler_list.h"

namespace hushpane::x11 {

struct KeyFacts {
  std::vector<std::optional<std::uint16_t>> virtualKeyCodes;  // by keycode
  std::bitset<256> modifierKeys;
  std::uint16_t numLock = 0;  // its bit of a core event's state
};

// What the server's keyboard map says of its keys: which place on the ANSI keyboard each has, which ones only modify
// others, and which modifier is Num Lock. It is read on first use after each change, in one round trip, else never.
class KeyboardMap {
 public:
  explicit KeyboardMap(Connection& connection);

  // Nothing for keys that the ANSI keyboard lacks.
  std::optional<std::uint16_t> virtualKeyCode(xcb_keycode_t keycode);
  // The keys in that place; usually one.
  std::vector<xcb_keycode_t> keycodes(std::uint16_t virtualKeyCode);
  bool isModifierKey(xcb_keycode_t keycode);
  // The bit of a core event's state; 0 when no key is Num Lock.
  std::uint16_t numLock();

  // Called after the map has changed; often several times in a row.
  platform::Token onChange(std::function<void()> handler) { return changed_.add(std::move(handler)); }

 private:
  void handle(const xcb_generic_event_t& event);
  const KeyFacts& facts();

  Connection& connection_;
  std::optional<ExtensionInfo> xkb_;
  std::optional<KeyFacts> facts_;
  platform::HandlerList<void()> changed_;
  platform::Token events_;
};

}  // namespace hushpane::x11

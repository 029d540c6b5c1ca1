#pragma once

#include <string>

#include "platform/event_monitors.h"

namespace hushpane::platform {

// The keys that a page deals with by name, wherever they are on the keyboard; those of the numeric pad count as their
// likes.
enum class Key { other, escape, tab, space, returnKey, left, right, up, down, home, end, pageUp, pageDown };

// A key that goes down in a panel, or repeats.
struct KeyPress {
  Key key = Key::other;
  ModifierFlags modifiers = 0;
  std::string letter = {};  // what the key writes without modifiers, UTF-8; empty for keys that write nothing
  bool operator==(const KeyPress&) const = default;

  bool has(ModifierFlags modifier) const { return (modifiers & modifier) != 0; }
};

}  // namespace hushpane::platform

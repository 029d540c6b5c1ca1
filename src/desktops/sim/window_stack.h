#pragma once

#include <vector>

#include "platform/window_list.h"

namespace hushpane::sim {

// The order of all windows: by layer, the highest in front, and within a layer by who came to the front last.
class WindowStack {
 public:
  struct Item {
    platform::WindowNumber number = 0;
    int layer = 0;
    bool operator==(const Item&) const = default;
  };

  // From front to back.
  const std::vector<Item>& items() const { return items_; }
  // Null when the window is not in the stack.
  const Item* find(platform::WindowNumber number) const;

  // Puts a window, new or known, in front of all others of that layer.
  void bringToFront(platform::WindowNumber number, int layer);
  // Puts a known window directly beneath a sibling of its own layer; without such a sibling it stays where it is.
  void putBelow(platform::WindowNumber number, platform::WindowNumber sibling);
  void remove(platform::WindowNumber number);

 private:
  std::vector<Item> items_;
};

}  // namespace hushpane::sim

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/geometry.h"

namespace hushpane::declarative {

struct MenuEntry {
  std::string title;
  bool isChecked = false;
  bool isDivider = false;  // a line between two groups, without anything else
  std::function<void()> action;
};

// What a page asks for when one of its menus is pressed.
struct MenuRequest {
  platform::Rect anchor;  // of the menu's label, in the page's coordinates
  std::vector<MenuEntry> entries;
};

}  // namespace hushpane::declarative

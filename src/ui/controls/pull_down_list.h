#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "declarative/element.h"
#include "declarative/menu.h"

namespace hushpane {

// The page in the panel that a menu opens: one row for each entry, of which one is highlighted, by the pointer or the
// keyboard; at first the checked one. As wide as the longest title; it scrolls where it is offered too little height.
struct PullDownList {
  std::vector<declarative::MenuEntry> entries;
  std::function<void(std::size_t)> choose;  // with the entry's index

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

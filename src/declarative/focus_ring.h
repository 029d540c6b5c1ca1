#pragma once

#include <optional>

#include "declarative/drawing.h"
#include "declarative/node.h"

namespace hushpane::declarative {

// The line around the element that has the keyboard, to be drawn in front of everything: outside of its content shape,
// inside the page and what scrolls around it. Nothing where that is out of view. On whole pixels when the page rests.
std::optional<Drawing> focusRing(const Node& node, platform::Size page, double scale, bool rests);

}  // namespace hushpane::declarative

#include "declarative/scrolling.h"

#include <algorithm>
#include <ranges>
#include <utility>

#include "declarative/pointer_target.h"

namespace hushpane::declarative {

namespace {

constexpr double viewMargin = 5;  // points that are shown around what is scrolled into view

}  // namespace

double scrollRange(const Node& viewport) {
  if (viewport.children.empty()) return 0;
  const double range = viewport.children.front()->target().height - viewport.target().height;
  constexpr double roundingError = 0.01;
  return range > roundingError ? range : 0;
}

platform::Rect viewOf(const platform::Rect& frame) {
  constexpr double room = 40;
  return {frame.x - room, frame.y, frame.width + 2 * room, frame.height};
}

bool scrollBy(Node& viewport, double delta) {
  const double offset = std::clamp(viewport.scrollOffset + delta, 0.0, scrollRange(viewport));
  return std::exchange(viewport.scrollOffset, offset) != offset;
}

bool scrollAt(Node& node, platform::Point point, double delta) {
  const auto inside = within(node, point);
  if (!inside) return false;
  for (const auto& child : node.children | std::views::reverse)
    if (scrollAt(*child, *inside, delta)) return true;
  return std::holds_alternative<kinds::Scrolling>(node.kind) && scrollBy(node, delta);
}

void scrollIntoView(const Node& node) {
  for (Node* around = node.parent; around; around = around->parent) {
    if (!std::holds_alternative<kinds::Scrolling>(around->kind)) continue;
    const Mapping content = contentOnPage(around);
    if (content.isFlat()) return;
    const platform::Rect frame = content.inverted().at(contentOnPage(node.parent).at(node.current()));
    const double above = frame.y - viewMargin - around->scrollOffset;
    const double below = frame.bottom() + viewMargin - around->scrollOffset - around->target().height;
    if (above < 0)
      scrollBy(*around, above);
    else if (below > 0)
      scrollBy(*around, std::min(below, above));
  }
}

}  // namespace hushpane::declarative

#include "declarative/pointer_target.h"

#include <algorithm>
#include <ranges>

#include "declarative/looks.h"

namespace hushpane::declarative {

using platform::Point;
using platform::Rect;

namespace {

Rect bounds(const Node& node) {
  const Rect place = node.current();
  return {0, 0, place.width, place.height};
}

bool isCutOff(const Node& node, Point inside) {
  if (const auto* clip = std::get_if<kinds::Clip>(&node.kind)) return !contains(clip->shape, bounds(node), inside);
  return std::holds_alternative<kinds::Scrolling>(node.kind) &&
         !bounds(node).contains({inside.x, inside.y - node.scrollOffset});
}

// The children from the front to the back.
std::vector<std::shared_ptr<Node>> frontToBack(const Node& node) {
  std::vector<std::shared_ptr<Node>> children = node.children;
  const auto* layered = std::get_if<kinds::Layered>(&node.kind);
  if (!layered || layered->side == kinds::Layered::Side::inFront) std::ranges::reverse(children);
  return children;
}

}  // namespace

std::optional<Point> within(const Node& node, Point point) {
  if (const auto* effect = std::get_if<kinds::Effect>(&node.kind); effect && effect->opacity <= 0) return std::nullopt;
  const Mapping content = contentMapping(node, mappingOf(node));
  if (content.isFlat()) return std::nullopt;
  const Point inside = content.inverted().at(point);
  return isCutOff(node, inside) ? std::nullopt : std::optional(inside);
}

bool takesPresses(const Node& node) {
  return std::holds_alternative<kinds::Button>(node.kind) || std::holds_alternative<kinds::Tap>(node.kind) ||
         std::holds_alternative<kinds::Menu>(node.kind);
}

bool covers(const Node& node, Point point) {
  const auto inside = within(node, point);
  if (!inside) return false;
  if (const auto* content = std::get_if<kinds::ContentShape>(&node.kind))
    return contains(content->shape, bounds(node), *inside);
  if (const auto* fill = std::get_if<kinds::Fill>(&node.kind)) return contains(fill->shape, bounds(node), *inside);
  if (std::holds_alternative<kinds::Text>(node.kind) || std::holds_alternative<kinds::Symbol>(node.kind) ||
      std::holds_alternative<kinds::Picture>(node.kind))
    return bounds(node).contains(*inside);
  return std::ranges::any_of(node.children, [&](const auto& child) { return covers(*child, *inside); });
}

std::shared_ptr<Node> pressTarget(const std::shared_ptr<Node>& node, Point point) {
  const auto inside = within(*node, point);
  if (!inside) return nullptr;
  for (const auto& child : frontToBack(*node))
    if (auto found = pressTarget(child, *inside)) return found;
  return takesPresses(*node) && covers(*node, point) ? node : nullptr;
}

std::vector<std::shared_ptr<Node>> hoverTargets(const std::shared_ptr<Node>& node, Point point) {
  const auto inside = within(*node, point);
  std::vector<std::shared_ptr<Node>> found;
  if (!inside) return found;
  if (std::holds_alternative<kinds::Hover>(node->kind) && bounds(*node).contains(*inside)) found.push_back(node);
  for (const auto& child : node->children)
    for (auto& below : hoverTargets(child, *inside)) found.push_back(std::move(below));
  return found;
}

std::optional<std::string> tooltipAt(const std::shared_ptr<Node>& node, Point point) {
  const auto inside = within(*node, point);
  if (!inside) return std::nullopt;
  for (const auto& child : frontToBack(*node))
    if (auto found = tooltipAt(child, *inside)) return found;
  const auto* tooltip = std::get_if<kinds::Tooltip>(&node->kind);
  return tooltip && bounds(*node).contains(*inside) ? std::optional(tooltip->text) : std::nullopt;
}

}  // namespace hushpane::declarative

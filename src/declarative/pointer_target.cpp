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

// From the parent's coordinates to those of the node's children.
Point within(const Node& node, Point point) {
  const Rect place = node.current();
  Point inside{point.x - place.x, point.y - place.y};
  if (node.isMirrored) inside.x = place.width - inside.x;
  if (std::holds_alternative<kinds::Offset>(node.kind)) {
    const Point offset = offsetFrom(node.looks.current());
    inside = {inside.x - offset.x, inside.y - offset.y};
  } else if (const auto* scale = std::get_if<kinds::Scale>(&node.kind)) {
    const double factor = scaleFrom(node.looks.current());
    const Point anchor{place.width * scale->anchor.x, place.height * scale->anchor.y};
    if (factor > 0) inside = {anchor.x + (inside.x - anchor.x) / factor, anchor.y + (inside.y - anchor.y) / factor};
  }
  return inside;
}

bool clipsAway(const Node& node, Point inside) {
  const auto* clip = std::get_if<kinds::Clip>(&node.kind);
  return clip && !contains(clip->shape, bounds(node), inside);
}

// The children from the front to the back.
std::vector<std::shared_ptr<Node>> frontToBack(const Node& node) {
  std::vector<std::shared_ptr<Node>> children = node.children;
  const auto* layered = std::get_if<kinds::Layered>(&node.kind);
  if (!layered || layered->side == kinds::Layered::Side::inFront) std::ranges::reverse(children);
  return children;
}

}  // namespace

bool covers(const Node& node, Point point) {
  const Point inside = within(node, point);
  if (clipsAway(node, inside)) return false;
  if (const auto* content = std::get_if<kinds::ContentShape>(&node.kind))
    return contains(content->shape, bounds(node), inside);
  if (const auto* fill = std::get_if<kinds::Fill>(&node.kind)) return contains(fill->shape, bounds(node), inside);
  if (std::holds_alternative<kinds::Text>(node.kind) || std::holds_alternative<kinds::Symbol>(node.kind) ||
      std::holds_alternative<kinds::Picture>(node.kind))
    return bounds(node).contains(inside);
  return std::ranges::any_of(node.children, [&](const auto& child) { return covers(*child, inside); });
}

std::shared_ptr<Node> pressTarget(const std::shared_ptr<Node>& node, Point point) {
  const Point inside = within(*node, point);
  if (clipsAway(*node, inside)) return nullptr;
  for (const auto& child : frontToBack(*node))
    if (auto found = pressTarget(child, inside)) return found;
  const bool takesPresses =
      std::holds_alternative<kinds::Button>(node->kind) || std::holds_alternative<kinds::Tap>(node->kind);
  return takesPresses && covers(*node, point) ? node : nullptr;
}

std::vector<std::shared_ptr<Node>> hoverTargets(const std::shared_ptr<Node>& node, Point point) {
  const Point inside = within(*node, point);
  std::vector<std::shared_ptr<Node>> found;
  if (clipsAway(*node, inside)) return found;
  if (std::holds_alternative<kinds::Hover>(node->kind) && bounds(*node).contains(inside)) found.push_back(node);
  for (const auto& child : node->children)
    for (auto& below : hoverTargets(child, inside)) found.push_back(std::move(below));
  return found;
}

std::optional<std::string> tooltipAt(const std::shared_ptr<Node>& node, Point point) {
  const Point inside = within(*node, point);
  if (clipsAway(*node, inside)) return std::nullopt;
  for (const auto& child : frontToBack(*node))
    if (auto found = tooltipAt(child, inside)) return found;
  const auto* tooltip = std::get_if<kinds::Tooltip>(&node->kind);
  return tooltip && bounds(*node).contains(inside) ? std::optional(tooltip->text) : std::nullopt;
}

}  // namespace hushpane::declarative

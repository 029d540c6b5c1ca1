#include "declarative/node.h"

#include <algorithm>

#include "declarative/looks.h"

namespace hushpane::declarative {

using platform::LayoutDirection;
using platform::Point;

namespace {

template <class... Kinds>
bool isAnyOf(const Kind& kind) {
  return (std::holds_alternative<Kinds>(kind) || ...);
}

// Out of opacity, offset and scale.
Mapping through(const Node::Presence& presence, const platform::Rect& place, const Mapping& mapping) {
  const Numbers& effect = presence.effect.current();
  const Point anchor{place.width * presence.anchor.x, place.height * presence.anchor.y};
  return mapping.movedBy({effect[1], effect[2]}).scaledBy(std::max(effect[3], 0.0), anchor);
}

}  // namespace

// Whoever still holds a child must not look up to a parent that is gone.
Node::~Node() {
  for (const auto& child : children) child->parent = nullptr;
  for (const auto& child : leaving) child->parent = nullptr;
}

bool showsNothing(const Node& node) {
  const bool isThere =
      isAnyOf<kinds::Text, kinds::Symbol, kinds::Picture, kinds::Fill, kinds::Stroke, kinds::Spacer, kinds::Divider,
              kinds::VerticalStack, kinds::HorizontalStack, kinds::OverlaidStack>(node.kind);
  return !isThere && (node.children.empty() || showsNothing(*node.children.front()));
}

Mapping mappingOf(const Node& node, const Mapping& outer) {
  const auto place = node.current();
  Mapping own = outer.movedBy({place.x, place.y});
  if (node.presence) own = through(*node.presence, place, own);
  const auto around = node.parent ? node.parent->environment.direction : LayoutDirection::leftToRight;
  return node.environment.direction == around ? own : own.mirroredWithin(place.width);
}

Mapping contentMapping(const Node& node, const Mapping& own) {
  if (std::holds_alternative<kinds::Offset>(node.kind)) return own.movedBy(offsetFrom(node.looks.current()));
  if (std::holds_alternative<kinds::Scrolling>(node.kind)) return own.movedBy({0, -node.scrollOffset});
  if (const auto* scale = std::get_if<kinds::Scale>(&node.kind)) {
    const auto place = node.current();
    const Point anchor{place.width * scale->anchor.x, place.height * scale->anchor.y};
    return own.scaledBy(scaleFrom(node.looks.current()), anchor);
  }
  return own;
}

Mapping contentOnPage(const Node* node) {
  return node ? contentMapping(*node, mappingOf(*node, contentOnPage(node->parent))) : Mapping{};
}

}  // namespace hushpane::declarative

#include "declarative/node.h"

namespace hushpane::declarative {

// Whoever still holds a child must not look up to a parent that is gone.
Node::~Node() {
  for (const auto& child : children) child->parent = nullptr;
  for (const auto& child : leaving) child->parent = nullptr;
}

platform::Point originOnPage(const Node& node) {
  platform::Point origin;
  for (const Node* at = &node; at; at = at->parent) {
    const auto frame = at->current();
    origin.x += frame.x;
    origin.y += frame.y;
  }
  return origin;
}

}  // namespace hushpane::declarative

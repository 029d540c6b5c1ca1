#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "declarative/animation.h"
#include "declarative/context.h"
#include "declarative/element.h"
#include "platform/geometry.h"
#include "platform/text.h"

namespace hushpane::declarative {

// The size that a parent offers; a side without a number asks for the ideal one, 0 for the smallest, infinity for the
// largest.
struct ProposedSize {
  std::optional<double> width;
  std::optional<double> height;
  bool operator==(const ProposedSize&) const = default;
};

// An element that is on the page: its identity, and what it looks like now. Nodes form a tree of the shape of the
// elements; a node keeps its place in it as long as every rendering has an element of its kind and id there.
struct Node {
  Kind kind;
  Equatable key;  // among its siblings
  Node* parent = nullptr;
  std::vector<std::shared_ptr<Node>> children;
  std::vector<std::shared_ptr<Node>> leaving;  // were children and are on their way out, at their last places

  bool isOnPage = false;  // false once it is on its way out

  // Of a component.
  std::unique_ptr<Identity> identity;
  bool isDirty = false;
  Environment environment;  // as the body last saw it; of a text or symbol, what it is drawn in

  // Its content reads in the other direction than what is around it.
  bool isMirrored = false;

  // Of the rendering under way.
  bool isNew = true;
  bool valueChanged = false;           // of an animation on a value, or of an observer of one
  std::optional<Animation> animation;  // by which changes come about

  // Measured in the layout under way.
  std::vector<std::pair<ProposedSize, platform::Size>> measured;
  // In its parent's coordinates, as laid out and as shown: x, y, width, height.
  Motion place{{0, 0, 0, 0}};
  platform::TextLayoutPtr textLayout;
  std::optional<SymbolDrawing> symbol;

  // Colours, fades and the like; see looks.h.
  Motion looks{{}};
  // How far it has come in (1) or gone out (0), through a transition.
  struct Presence {
    Motion share;
    TransitionEffect effect;
  };
  std::unique_ptr<Presence> presence;
  bool isPressed = false;

  Node(Kind kindOfNode, Equatable keyOfNode) : kind(std::move(kindOfNode)), key(std::move(keyOfNode)) {}
  Node(const Node&) = delete;
  Node& operator=(const Node&) = delete;
  ~Node();

  platform::Rect target() const { return rectOf(place.target()); }
  platform::Rect current() const { return rectOf(place.current()); }

  static platform::Rect rectOf(const Numbers& numbers) { return {numbers[0], numbers[1], numbers[2], numbers[3]}; }
};

// Where the parent of a node's children begins, on the page as shown.
platform::Point originOnPage(const Node& node);

// Calls `visit` for the node and all below it, parents first.
template <class Visitor>
void forEachNode(Node& node, const Visitor& visit) {
  visit(node);
  for (const auto& child : node.children) forEachNode(*child, visit);
}

}  // namespace hushpane::declarative

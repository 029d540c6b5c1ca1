#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "declarative/animation.h"
#include "declarative/context.h"
#include "declarative/element.h"
#include "declarative/mapping.h"
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
struct Node : std::enable_shared_from_this<Node> {
  Kind kind;
  Equatable key;          // among its siblings
  std::size_t index = 0;  // of its element among those of its parent
  Node* parent = nullptr;
  std::vector<std::shared_ptr<Node>> children;
  std::vector<std::shared_ptr<Node>> leaving;  // were children and are on their way out, at their last places

  bool isOnPage = false;  // false once it is on its way out

  // Of a component.
  std::unique_ptr<Identity> identity;
  bool isDirty = false;
  bool showedNothing = false;  // as last laid out

  Environment environment;  // of what is inside

  // Of the rendering under way.
  bool isNew = true;
  bool valueChanged = false;           // of an animation on a value, or of an observer of one
  std::optional<Animation> animation;  // by which changes come about

  // Measured in the layout under way.
  std::vector<std::pair<ProposedSize, platform::Size>> measured;
  // In its parent's coordinates, as laid out and as shown: x, y, width, height.
  Motion place{{0, 0, 0, 0}};
  // Of a text: what it is drawn with.
  struct SetText {
    platform::TextStyle style;
    double width = 0;
    platform::TextLayoutPtr layout;
  };
  SetText setText;
  std::optional<SymbolDrawing> symbol;

  double scrollOffset = 0;  // of what scrolls: points of its content above its upper edge

  // Colours, fades and the like; see looks.h.
  Motion looks{{}};
  // On its way in or out, through a transition.
  struct Presence {
    Motion effect;  // opacity, offset, scale
    UnitPoint anchor;
    bool isRemoval = false;
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

// Whether there is nothing in it to be laid out: a view that shows nothing for now, whatever is said of it.
bool showsNothing(const Node& node);

// From a node's own coordinates to those that `outer` maps its parent's content to, as shown.
Mapping mappingOf(const Node& node, const Mapping& outer = {});
// The same for its content, from the mapping of its own; an offset, a scale or scrolling lies between the two.
Mapping contentMapping(const Node& node, const Mapping& own);
// From the coordinates of its content to those of the page.
Mapping contentOnPage(const Node* node);

// Calls `visit` for the node and all below it, parents first.
template <class Visitor>
void forEachNode(Node& node, const Visitor& visit) {
  visit(node);
  for (const auto& child : node.children) forEachNode(*child, visit);
}

}  // namespace hushpane::declarative

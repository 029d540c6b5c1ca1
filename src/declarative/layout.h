#pragma once

#include <optional>
#include <vector>

#include "declarative/node.h"
#include "declarative/renderer.h"
#include "platform/text.h"

namespace hushpane::declarative {

// Sizes and places of a tree of nodes. A parent proposes a size, the child answers with its own, and the parent places
// it. What comes out is each node's target place; place() gives it and applyLayout() sets or moves the node there.
class Layout {
 public:
  explicit Layout(platform::TextEngine& texts) : texts_(texts) {}

  platform::Size measure(Node& node, const ProposedSize& proposal);
  // Places the node and all below it.
  void place(Node& node, platform::Point origin, const ProposedSize& proposal);

  struct Placed {
    Node* node = nullptr;
    platform::Rect frame;  // in the parent's coordinates
  };
  // Parents first.
  const std::vector<Placed>& placed() const { return placed_; }

 private:
  enum class Axis { horizontal, vertical };

  platform::Size answer(Node& node, const kinds::Text& text, const ProposedSize& proposal);
  platform::Size answer(Node& node, const kinds::Symbol& symbol, const ProposedSize& proposal);
  platform::Size answer(Node& node, const kinds::Spacer& spacer, const ProposedSize& proposal);
  platform::Size answer(Node& node, const kinds::VerticalStack& stack, const ProposedSize& proposal);
  platform::Size answer(Node& node, const kinds::HorizontalStack& stack, const ProposedSize& proposal);
  platform::Size answer(Node& node, const kinds::OverlaidStack& stack, const ProposedSize& proposal);
  platform::Size answer(Node& node, const kinds::Padding& padding, const ProposedSize& proposal);
  platform::Size answer(Node& node, const kinds::Frame& frame, const ProposedSize& proposal);
  platform::Size answer(Node& node, const kinds::FixedSize& fixed, const ProposedSize& proposal);
  platform::Size answer(Node& node, const kinds::Scrolling& scrolling, const ProposedSize& proposal);
  platform::Size answer(Node& node, const kinds::Divider& divider, const ProposedSize& proposal);
  platform::Size answerOfContent(Node& node, const ProposedSize& proposal);
  template <class Other>
  platform::Size answer(Node& node, const Other&, const ProposedSize& proposal) {
    return answerOfContent(node, proposal);
  }

  void placeChildren(Node& node, const kinds::VerticalStack& stack, const ProposedSize& proposal);
  void placeChildren(Node& node, const kinds::HorizontalStack& stack, const ProposedSize& proposal);
  void placeChildren(Node& node, const kinds::OverlaidStack& stack, const ProposedSize& proposal);
  void placeChildren(Node& node, const kinds::Layered& layered, const ProposedSize& proposal);
  void placeChildren(Node& node, const kinds::Padding& padding, const ProposedSize& proposal);
  void placeChildren(Node& node, const kinds::Frame& frame, const ProposedSize& proposal);
  void placeChildren(Node& node, const kinds::FixedSize& fixed, const ProposedSize& proposal);
  void placeChildren(Node& node, const kinds::Scrolling& scrolling, const ProposedSize& proposal);
  template <class Other>
  void placeChildren(Node& node, const Other&, const ProposedSize& proposal) {
    for (const auto& child : node.children) place(*child, {}, proposal);
  }

  // What a stack proposes to those of its children that show something.
  struct Share {
    Node* child = nullptr;
    ProposedSize proposal;
  };
  std::vector<Share> share(Node& stack, Axis axis, double spacing, const ProposedSize& proposal);
  void placeUnseen(Node& stack);
  void placeAligned(Node& child, platform::Size within, Alignment alignment, const ProposedSize& proposal);
  double baseline(Node& node, const ProposedSize& proposal);
  Node::SetText setText(const Node& node, const kinds::Text& text, std::optional<double> width);

  platform::TextEngine& texts_;
  std::vector<Placed> placed_;
};

}  // namespace hushpane::declarative

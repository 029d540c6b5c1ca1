#include "declarative/layout.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace hushpane::declarative {

using platform::Point;
using platform::Size;

namespace {

constexpr double idealShapeSide = 10;  // points; of what has no size of its own
constexpr double dividerThickness = 1;

ProposedSize inset(const ProposedSize& proposal, const Insets& insets) {
  const auto less = [](std::optional<double> side, double amount) -> std::optional<double> {
    return side ? std::optional(std::max(*side - amount, 0.0)) : std::nullopt;
  };
  return {less(proposal.width, insets.leading + insets.trailing), less(proposal.height, insets.top + insets.bottom)};
}

ProposedSize exactly(Size size) {
  return {size.width, size.height};
}

// What a frame proposes along one side.
std::optional<double> proposedBy(std::optional<double> fixed, std::optional<double> least, std::optional<double> most,
                                 std::optional<double> offered) {
  if (fixed) return fixed;
  if (!offered) return offered;
  return std::clamp(*offered, least.value_or(0), std::max(most.value_or(infinity), least.value_or(0)));
}

// And what it answers. With a bound on one side only, the content is the other bound.
double answeredBy(std::optional<double> fixed, std::optional<double> least, std::optional<double> most,
                  std::optional<double> offered, double content) {
  if (fixed) return *fixed;
  if (!least && !most) return content;
  const double lowest = least.value_or(std::min(content, most.value_or(content)));
  const double highest = std::max(most.value_or(std::max(content, lowest)), lowest);
  return std::clamp(offered.value_or(content), lowest, highest);
}

double spacingOf(std::size_t count, double spacing) {
  return count == 0 ? 0 : spacing * static_cast<double>(count - 1);
}

double shareOf(HorizontalAlignment alignment) {
  return alignment == HorizontalAlignment::leading ? 0 : alignment == HorizontalAlignment::center ? 0.5 : 1;
}

double shareOf(VerticalAlignment alignment) {
  return alignment == VerticalAlignment::bottom ? 1 : alignment == VerticalAlignment::center ? 0.5 : 0;
}

}  // namespace

Size Layout::measure(Node& node, const ProposedSize& proposal) {
  if (showsNothing(node)) return {};
  const auto known = std::ranges::find(node.measured, proposal, &std::pair<ProposedSize, Size>::first);
  if (known != node.measured.end()) return known->second;
  const Size size = std::visit([&](const auto& kind) { return answer(node, kind, proposal); }, node.kind);
  node.measured.emplace_back(proposal, size);
  return size;
}

Size Layout::answer(Node& node, const kinds::Text& text, const ProposedSize& proposal) {
  // How narrow it could be is asked only to see who bends most.
  const bool asksForSmallest = proposal.width && *proposal.width <= 0;
  const Size size = setText(node, text, asksForSmallest ? std::nullopt : proposal.width).layout->size();
  // Rows of text are whole points high, so that what lies around them has its edges on whole pixels.
  return {asksForSmallest ? 0 : size.width, std::ceil(size.height)};
}

// One that is set like this already stays, so that it is not drawn anew.
Node::SetText Layout::setText(const Node& node, const kinds::Text& text, std::optional<double> width) {
  Node::SetText set{text.style, width.value_or(platform::TextEngine::unlimited), nullptr};
  set.style.direction = node.environment.direction;
  set.style.language = node.environment.locale;
  const auto& known = node.setText;
  const bool isKnown =
      known.layout && known.style == set.style && known.width == set.width && known.layout->text() == text.text;
  set.layout = isKnown ? known.layout : texts_.layout(text.text, set.style, set.width);
  return set;
}

Size Layout::answer(Node& node, const kinds::Symbol& symbol, const ProposedSize&) {
  if (!node.symbol) node.symbol = drawSymbol(symbol.name, symbol.font, symbol.variant);
  return node.symbol ? node.symbol->size : Size{};
}

Size Layout::answer(Node& node, const kinds::Spacer& spacer, const ProposedSize& proposal) {
  const auto stretch = [&](std::optional<double> side) { return std::max(side.value_or(0), spacer.minLength); };
  const bool isHorizontal = node.parent && std::holds_alternative<kinds::HorizontalStack>(node.parent->kind);
  return isHorizontal ? Size{stretch(proposal.width), 0} : Size{0, stretch(proposal.height)};
}

Size Layout::answer(Node&, const kinds::Divider&, const ProposedSize& proposal) {
  return {proposal.width.value_or(idealShapeSide), dividerThickness};
}

Size Layout::answer(Node& node, const kinds::VerticalStack& stack, const ProposedSize& proposal) {
  const auto shares = share(node, Axis::vertical, stack.spacing, proposal);
  Size size{0, spacingOf(shares.size(), stack.spacing)};
  for (const auto& [child, proposed] : shares) {
    const Size answered = measure(*child, proposed);
    size = {std::max(size.width, answered.width), size.height + answered.height};
  }
  return size;
}

Size Layout::answer(Node& node, const kinds::HorizontalStack& stack, const ProposedSize& proposal) {
  const auto shares = share(node, Axis::horizontal, stack.spacing, proposal);
  double width = spacingOf(shares.size(), stack.spacing), above = 0, below = 0;
  const bool onBaseline = stack.alignment == VerticalAlignment::firstTextBaseline;
  for (const auto& [child, proposed] : shares) {
    const Size answered = measure(*child, proposed);
    const double base = onBaseline ? baseline(*child, proposed) : 0;
    width += answered.width;
    above = std::max(above, base);
    below = std::max(below, answered.height - base);
  }
  return {width, above + below};
}

Size Layout::answer(Node& node, const kinds::OverlaidStack&, const ProposedSize& proposal) {
  Size size;
  for (const auto& child : node.children) {
    const Size answered = measure(*child, proposal);
    size = {std::max(size.width, answered.width), std::max(size.height, answered.height)};
  }
  return size;
}

Size Layout::answer(Node& node, const kinds::Padding& padding, const ProposedSize& proposal) {
  const Size content = answerOfContent(node, inset(proposal, padding.insets));
  return {content.width + padding.insets.leading + padding.insets.trailing,
          content.height + padding.insets.top + padding.insets.bottom};
}

Size Layout::answer(Node& node, const kinds::Frame& frame, const ProposedSize& proposal) {
  const Size content =
      answerOfContent(node, {proposedBy(frame.width, frame.minWidth, frame.maxWidth, proposal.width),
                             proposedBy(frame.height, frame.minHeight, frame.maxHeight, proposal.height)});
  return {answeredBy(frame.width, frame.minWidth, frame.maxWidth, proposal.width, content.width),
          answeredBy(frame.height, frame.minHeight, frame.maxHeight, proposal.height, content.height)};
}

Size Layout::answer(Node& node, const kinds::FixedSize& fixed, const ProposedSize& proposal) {
  return answerOfContent(
      node, {fixed.horizontal ? std::nullopt : proposal.width, fixed.vertical ? std::nullopt : proposal.height});
}

Size Layout::answer(Node& node, const kinds::Scrolling&, const ProposedSize& proposal) {
  const Size content = answerOfContent(node, {proposal.width, std::nullopt});
  return {content.width, std::min(content.height, proposal.height.value_or(content.height))};
}

// Modifiers answer as what they modify; leaves without a size of their own take what they get.
Size Layout::answerOfContent(Node& node, const ProposedSize& proposal) {
  if (!node.children.empty()) return measure(*node.children.front(), proposal);
  const bool isLeaf = std::holds_alternative<kinds::Fill>(node.kind) ||
                      std::holds_alternative<kinds::Stroke>(node.kind) ||
                      std::holds_alternative<kinds::Picture>(node.kind);
  if (!isLeaf) return {};
  return {proposal.width.value_or(idealShapeSide), proposal.height.value_or(idealShapeSide)};
}

// Parts the length of a stack among its children: those that bend least come first, and each may take an equal part of
// what is left then. Spacers get what nobody else needs.
std::vector<Layout::Share> Layout::share(Node& stack, Axis axis, double spacing, const ProposedSize& proposal) {
  const bool isHorizontal = axis == Axis::horizontal;
  const auto length = isHorizontal ? proposal.width : proposal.height;
  const auto along = [&](std::optional<double> main) {
    return isHorizontal ? ProposedSize{main, proposal.height} : ProposedSize{proposal.width, main};
  };
  const auto mainOf = [&](Size size) { return isHorizontal ? size.width : size.height; };
  std::vector<Share> shares;
  for (const auto& child : stack.children)
    if (!showsNothing(*child)) shares.push_back({child.get(), along(length)});
  if (!length || std::isinf(*length)) return shares;

  struct Claim {
    Share* share = nullptr;
    double least = 0;
    double stretch = 0;
  };
  std::vector<Claim> claims, spacers;
  double left = *length - spacingOf(shares.size(), spacing);
  for (auto& share : shares) {
    const double least = mainOf(measure(*share.child, along(0)));
    const Claim claim{&share, least, mainOf(measure(*share.child, along(infinity))) - least};
    const bool isSpacer = std::holds_alternative<kinds::Spacer>(share.child->kind);
    (isSpacer ? spacers : claims).push_back(claim);
    if (isSpacer) left -= least;
  }
  // Of two that bend alike, the one first that needs more.
  std::ranges::stable_sort(claims, {}, [](const Claim& claim) { return std::pair(claim.stretch, -claim.least); });
  const auto serve = [&](const std::vector<Claim>& all) {
    for (auto waiting = static_cast<double>(all.size()); const auto& claim : all) {
      claim.share->proposal = along(std::max(left, 0.0) / waiting--);
      left -= mainOf(measure(*claim.share->child, claim.share->proposal));
    }
  };
  serve(claims);
  for (const auto& spacer : spacers) left += spacer.least;
  serve(spacers);
  return shares;
}

// Of the first text when the node is placed like this, else its lower edge.
double Layout::baseline(Node& node, const ProposedSize& proposal) {
  Layout trial(texts_);
  trial.place(node, {}, proposal);
  double y = 0;
  for (const auto& [placed, frame] : trial.placed()) {
    y += frame.y;
    if (placed->setText.layout) return y + placed->setText.layout->firstBaseline();
    if (placed->children.empty()) break;
  }
  return measure(node, proposal).height;
}

void Layout::place(Node& node, Point origin, const ProposedSize& proposal) {
  const Size size = measure(node, proposal);
  placed_.push_back({&node, {origin.x, origin.y, size.width, size.height}});
  // A text that has no room is not drawn.
  if (const auto* text = std::get_if<kinds::Text>(&node.kind))
    node.setText = proposal.width && *proposal.width <= 0 ? Node::SetText{} : setText(node, *text, proposal.width);
  std::visit([&](const auto& kind) { placeChildren(node, kind, proposal); }, node.kind);
}

void Layout::placeAligned(Node& child, Size within, Alignment alignment, const ProposedSize& proposal) {
  const Size size = measure(child, proposal);
  place(child,
        {(within.width - size.width) * shareOf(alignment.horizontal),
         (within.height - size.height) * shareOf(alignment.vertical)},
        proposal);
}

void Layout::placeChildren(Node& node, const kinds::VerticalStack& stack, const ProposedSize& proposal) {
  const double width = measure(node, proposal).width;
  double y = 0;
  for (auto& [child, proposed] : share(node, Axis::vertical, stack.spacing, proposal)) {
    if (stack.fillsWidth && !proposed.width) proposed.width = width;
    const Size size = measure(*child, proposed);
    place(*child, {(width - size.width) * shareOf(stack.alignment), y}, proposed);
    y += size.height + stack.spacing;
  }
  placeUnseen(node);
}

void Layout::placeChildren(Node& node, const kinds::HorizontalStack& stack, const ProposedSize& proposal) {
  const auto shares = share(node, Axis::horizontal, stack.spacing, proposal);
  const double height = measure(node, proposal).height;
  const bool onBaseline = stack.alignment == VerticalAlignment::firstTextBaseline;
  double above = 0;
  for (const auto& [child, proposed] : shares) above = std::max(above, onBaseline ? baseline(*child, proposed) : 0);
  double x = 0;
  for (const auto& [child, proposed] : shares) {
    const Size size = measure(*child, proposed);
    const double y =
        onBaseline ? above - baseline(*child, proposed) : (height - size.height) * shareOf(stack.alignment);
    place(*child, {x, y}, proposed);
    x += size.width + stack.spacing;
  }
  placeUnseen(node);
}

// Children that take no part in the stack for now.
void Layout::placeUnseen(Node& stack) {
  for (const auto& child : stack.children)
    if (showsNothing(*child)) place(*child, {}, {});
}

void Layout::placeChildren(Node& node, const kinds::OverlaidStack& stack, const ProposedSize& proposal) {
  const Size size = measure(node, proposal);
  for (const auto& child : node.children) placeAligned(*child, size, stack.alignment, proposal);
}

void Layout::placeChildren(Node& node, const kinds::Layered& layered, const ProposedSize& proposal) {
  if (node.children.empty()) return;
  place(*node.children.front(), {}, proposal);
  const Size size = measure(*node.children.front(), proposal);
  if (node.children.size() > 1) placeAligned(*node.children[1], size, layered.alignment, exactly(size));
}

void Layout::placeChildren(Node& node, const kinds::Padding& padding, const ProposedSize& proposal) {
  for (const auto& child : node.children)
    place(*child, {padding.insets.leading, padding.insets.top}, inset(proposal, padding.insets));
}

void Layout::placeChildren(Node& node, const kinds::Frame& frame, const ProposedSize& proposal) {
  const Size size = measure(node, proposal);
  const ProposedSize inner{proposedBy(frame.width, frame.minWidth, frame.maxWidth, proposal.width),
                           proposedBy(frame.height, frame.minHeight, frame.maxHeight, proposal.height)};
  for (const auto& child : node.children) placeAligned(*child, size, frame.alignment, inner);
}

void Layout::placeChildren(Node& node, const kinds::FixedSize& fixed, const ProposedSize& proposal) {
  const ProposedSize inner{fixed.horizontal ? std::nullopt : proposal.width,
                           fixed.vertical ? std::nullopt : proposal.height};
  for (const auto& child : node.children) place(*child, {}, inner);
}

void Layout::placeChildren(Node& node, const kinds::Scrolling&, const ProposedSize& proposal) {
  for (const auto& child : node.children) place(*child, {}, {proposal.width, std::nullopt});
}

}  // namespace hushpane::declarative

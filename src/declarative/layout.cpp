#include "declarative/layout.h"

#include <algorithm>
#include <cmath>
#include <numeric>
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

double shareOf(HorizontalAlignment alignment) {
  return alignment == HorizontalAlignment::leading ? 0 : alignment == HorizontalAlignment::center ? 0.5 : 1;
}

double shareOf(VerticalAlignment alignment) {
  return alignment == VerticalAlignment::bottom ? 1 : alignment == VerticalAlignment::center ? 0.5 : 0;
}

}  // namespace

Size Layout::measure(Node& node, const ProposedSize& proposal) {
  const auto known = std::ranges::find(node.measured, proposal, &std::pair<ProposedSize, Size>::first);
  if (known != node.measured.end()) return known->second;
  const Size size = std::visit([&](const auto& kind) { return answer(node, kind, proposal); }, node.kind);
  node.measured.emplace_back(proposal, size);
  return size;
}

Size Layout::answer(Node& node, const kinds::Text& text, const ProposedSize& proposal) {
  const double width = proposal.width.value_or(platform::TextEngine::unlimited);
  auto style = text.style;
  style.direction = node.environment.direction;
  // How narrow it could be is asked only to see who bends most.
  const bool asksForSmallest = width <= 0;
  const auto layout = texts_.layout(text.text, style, asksForSmallest ? platform::TextEngine::unlimited : width);
  return {asksForSmallest ? 0 : layout->size().width, layout->size().height};
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
  const auto proposals = share(node, Axis::vertical, stack.spacing, proposal);
  Size size{0, stack.spacing * (node.children.empty() ? 0.0 : static_cast<double>(node.children.size() - 1))};
  for (std::size_t index = 0; index < node.children.size(); ++index) {
    const Size child = measure(*node.children[index], proposals[index]);
    size = {std::max(size.width, child.width), size.height + child.height};
  }
  return size;
}

Size Layout::answer(Node& node, const kinds::HorizontalStack& stack, const ProposedSize& proposal) {
  const auto proposals = share(node, Axis::horizontal, stack.spacing, proposal);
  Size size{stack.spacing * (node.children.empty() ? 0.0 : static_cast<double>(node.children.size() - 1)), 0};
  double above = 0, below = 0;
  const bool onBaseline = stack.alignment == VerticalAlignment::firstTextBaseline;
  for (std::size_t index = 0; index < node.children.size(); ++index) {
    const Size child = measure(*node.children[index], proposals[index]);
    size = {size.width + child.width, std::max(size.height, child.height)};
    const double base = onBaseline ? baseline(*node.children[index], proposals[index]) : 0;
    above = std::max(above, base);
    below = std::max(below, child.height - base);
  }
  return {size.width, above + below};
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
// what is left then.
std::vector<ProposedSize> Layout::share(Node& stack, Axis axis, double spacing, const ProposedSize& proposal) {
  const bool isHorizontal = axis == Axis::horizontal;
  const auto length = isHorizontal ? proposal.width : proposal.height;
  const auto along = [&](std::optional<double> main) {
    return isHorizontal ? ProposedSize{main, proposal.height} : ProposedSize{proposal.width, main};
  };
  const auto mainOf = [&](Size size) { return isHorizontal ? size.width : size.height; };
  std::vector<ProposedSize> proposals(stack.children.size(), along(length));
  if (!length || std::isinf(*length) || stack.children.empty()) return proposals;

  std::vector<double> stretch;
  for (const auto& child : stack.children)
    stretch.push_back(mainOf(measure(*child, along(infinity))) - mainOf(measure(*child, along(0))));
  std::vector<std::size_t> order(stack.children.size());
  std::iota(order.begin(), order.end(), 0);
  std::ranges::stable_sort(order, {}, [&](std::size_t index) { return stretch[index]; });

  double left = *length - spacing * static_cast<double>(order.size() - 1);
  for (std::size_t turn = 0; turn < order.size(); ++turn) {
    const auto index = order[turn];
    proposals[index] = along(std::max(left, 0.0) / static_cast<double>(order.size() - turn));
    left -= mainOf(measure(*stack.children[index], proposals[index]));
  }
  return proposals;
}

double Layout::baseline(Node& node, const ProposedSize& proposal) {
  const Size size = measure(node, proposal);
  if (const auto* text = std::get_if<kinds::Text>(&node.kind))
    return texts_.layout(text->text, text->style, platform::TextEngine::unlimited)->firstBaseline();
  if (node.children.empty()) return size.height;
  Node& first = *node.children.front();
  if (const auto* padding = std::get_if<kinds::Padding>(&node.kind))
    return padding->insets.top + baseline(first, inset(proposal, padding->insets));
  if (const auto* frame = std::get_if<kinds::Frame>(&node.kind)) {
    const double height = measure(first, exactly(size)).height;
    return (size.height - height) * shareOf(frame->alignment.vertical) + baseline(first, exactly(size));
  }
  return baseline(first, proposal);
}

void Layout::place(Node& node, Point origin, const ProposedSize& proposal) {
  const Size size = measure(node, proposal);
  placed_.push_back({&node, {origin.x, origin.y, size.width, size.height}});
  if (const auto* text = std::get_if<kinds::Text>(&node.kind)) {
    auto style = text->style;
    style.direction = node.environment.direction;
    node.textLayout =
        texts_.layout(text->text, style, proposal.width ? *proposal.width : platform::TextEngine::unlimited);
  }
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
  const auto proposals = share(node, Axis::vertical, stack.spacing, proposal);
  const double width = measure(node, proposal).width;
  double y = 0;
  for (std::size_t index = 0; index < node.children.size(); ++index) {
    Node& child = *node.children[index];
    const Size size = measure(child, proposals[index]);
    place(child, {(width - size.width) * shareOf(stack.alignment), y}, proposals[index]);
    y += size.height + stack.spacing;
  }
}

void Layout::placeChildren(Node& node, const kinds::HorizontalStack& stack, const ProposedSize& proposal) {
  const auto proposals = share(node, Axis::horizontal, stack.spacing, proposal);
  const double height = measure(node, proposal).height;
  const bool onBaseline = stack.alignment == VerticalAlignment::firstTextBaseline;
  double above = 0;
  for (std::size_t index = 0; onBaseline && index < node.children.size(); ++index)
    above = std::max(above, baseline(*node.children[index], proposals[index]));
  double x = 0;
  for (std::size_t index = 0; index < node.children.size(); ++index) {
    Node& child = *node.children[index];
    const Size size = measure(child, proposals[index]);
    const double y =
        onBaseline ? above - baseline(child, proposals[index]) : (height - size.height) * shareOf(stack.alignment);
    place(child, {x, y}, proposals[index]);
    x += size.width + stack.spacing;
  }
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

}  // namespace hushpane::declarative

#include "declarative/focus_ring.h"

#include <cmath>
#include <utility>

#include "declarative/scrolling.h"

namespace hushpane::declarative {

using platform::Rect;

namespace {

// Points.
constexpr double ringWidth = 2, gap = 1;
constexpr double reach = gap + ringWidth / 2;  // of the middle of its line
constexpr double cornerRadius = 5;             // around what has no round corners itself

Rect grown(const Rect& rect, double by) {
  return {rect.x - by, rect.y - by, rect.width + 2 * by, rect.height + 2 * by};
}

struct Outlined {
  const Node* node = nullptr;
  Shape shape = RoundedRectangle{cornerRadius};
};

Outlined outlinedPart(const Node& target) {
  for (const Node* at = &target;; at = at->children.front().get()) {
    if (const auto* content = std::get_if<kinds::ContentShape>(&at->kind)) {
      const bool isRound =
          !std::holds_alternative<Rectangle>(content->shape) && !std::holds_alternative<CustomShape>(content->shape);
      return isRound ? Outlined{at, content->shape} : Outlined{at};
    }
    const bool isModifier = at->children.size() == 1 || std::holds_alternative<kinds::Layered>(at->kind);
    if (!isModifier || at->children.empty()) return {&target};
  }
}

Mapping ownMapping(const Node& node) {
  return mappingOf(node, contentOnPage(node.parent));
}

Rect onPage(const Node& node) {
  const Rect place = node.current();
  return ownMapping(node).at(Rect{0, 0, place.width, place.height});
}

// What is seen of the page where the node is.
Rect viewAround(const Node& node, Rect view) {
  for (const Node* around = node.parent; around; around = around->parent)
    if (std::holds_alternative<kinds::Scrolling>(around->kind) && scrollRange(*around) > 0)
      view = view.intersection(viewOf(onPage(*around)));
  return view;
}

}  // namespace

std::optional<Drawing> focusRing(const Node& node, platform::Size page, double scale, bool rests) {
  auto [outlined, shape] = outlinedPart(node);
  Rect frame = onPage(*outlined);
  const auto whole = [&](double points) { return rests ? std::round(points * scale) / scale : points; };
  frame = {whole(frame.x), whole(frame.y), frame.width, frame.height};
  const Rect view = viewAround(*outlined, {0, 0, page.width, page.height});
  if (frame.intersection(view).area() <= 0) return std::nullopt;
  const Rect ringView = grown(view, gap + ringWidth);
  const Rect line = grown(frame, reach).intersection({1, 1, page.width - ringWidth, page.height - ringWidth});
  if (auto* rounded = std::get_if<RoundedRectangle>(&shape))
    rounded->radius = rounded->radius * ownMapping(*outlined).scaleY + reach;
  const Rect extent = grown(line, ringWidth / 2);
  const auto color = node.environment.accent.in(node.environment.appearance);
  Drawing ring{StrokedPath{pathOf(shape, line), color, {.width = ringWidth, .roundEnds = false}}, line, extent, {}};
  const Rect seen = extent.intersection(ringView);
  if (seen == extent) return ring;
  return Drawing{Clipping{platform::rectanglePath(ringView)}, line, seen, {std::move(ring)}};
}

}  // namespace hushpane::declarative

#include "declarative/page_drawing.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "declarative/looks.h"
#include "declarative/scrolling.h"

namespace hushpane::declarative {

using platform::Point;
using platform::Rect;

namespace {

constexpr double blurReach = 3;        // standard deviations, beyond which a Gaussian is not seen
constexpr double glyphOverhang = 0.5;  // of the font size, how far glyphs may leave their line's box

Rect grown(const Rect& rect, double by) {
  return {rect.x - by, rect.y - by, rect.width + 2 * by, rect.height + 2 * by};
}

bool isPlain(const platform::LayerEffect& effect) {
  return effect == platform::LayerEffect{};
}

Rect extentWith(const platform::LayerEffect& effect, const Rect& content) {
  const double reach = blurReach * effect.blurRadius;
  Rect all = grown(content, reach);
  for (const auto& shadow : effect.shadows) {
    const Rect cast = grown({content.x + shadow.offset.x, content.y + shadow.offset.y, content.width, content.height},
                            reach + blurReach * shadow.radius);
    all = unionOf(all, cast);
  }
  return all;
}

// Whether it neither moves nor scales.
bool onlyFades(const Node::Presence& presence) {
  const auto isInPlace = [](const Numbers& effect) { return effect[1] == 0 && effect[2] == 0 && effect[3] == 1; };
  return isInPlace(presence.effect.current()) && isInPlace(presence.effect.target());
}

class PageDrawing {
 public:
  explicit PageDrawing(double scale) : scale_(scale) {}

  void add(const Node& node, const Mapping& outer, bool rests, Drawings& drawings) const;

 private:
  void addContent(const Node& node, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void addChildren(const Node& node, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void addLayer(const platform::LayerEffect& effect, Drawings children, Drawings& drawings) const;
  void addPressable(const Node& node, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void addScrollBar(const Node& node, const Mapping& mapping, Drawings& drawings) const;

  void add(const Node& node, const kinds::Text& text, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Symbol& symbol, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Picture& picture, const Mapping& mapping, bool rests,
           Drawings& drawings) const;
  void add(const Node& node, const kinds::Fill& fill, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Stroke& stroke, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Divider& divider, const Mapping& mapping, bool rests,
           Drawings& drawings) const;
  void add(const Node& node, const kinds::Effect& effect, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Clip& clip, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Button&, const Mapping& mapping, bool rests, Drawings& drawings) const {
    addPressable(node, mapping, rests, drawings);
  }
  void add(const Node& node, const kinds::Menu&, const Mapping& mapping, bool rests, Drawings& drawings) const {
    addPressable(node, mapping, rests, drawings);
  }
  void add(const Node& node, const kinds::Scrolling&, const Mapping& mapping, bool rests, Drawings& drawings) const;
  template <class Other>
  void add(const Node& node, const Other&, const Mapping& mapping, bool rests, Drawings& drawings) const {
    addChildren(node, mapping, rests, drawings);
  }

  // Where a leaf is drawn: its own place, on whole pixels when it rests.
  Rect frameOf(const Node& node, const Mapping& mapping, bool rests) const;
  platform::Path outline(const Shape& shape, const Node& node, double inset, const Mapping& mapping, bool rests) const;
  double sharpInset(double width, double inset, const Mapping& mapping) const;

  double scale_;
};

void PageDrawing::add(const Node& node, const Mapping& outer, bool rests, Drawings& drawings) const {
  const Mapping mapping = mappingOf(node, outer);
  if (mapping.isFlat()) return;
  const bool carriesContent =
      std::holds_alternative<kinds::Offset>(node.kind) || std::holds_alternative<kinds::Scale>(node.kind);
  const bool restsToo = rests && !node.place.isMoving() && !(carriesContent && node.looks.isMoving());
  if (!node.presence) return addContent(node, mapping, restsToo, drawings);

  Drawings children;
  addContent(node, mapping, restsToo && onlyFades(*node.presence), children);
  const double opacity = std::clamp(node.presence->effect.current().front(), 0.0, 1.0);
  addLayer({.shadows = {}, .opacity = opacity}, std::move(children), drawings);
}

void PageDrawing::addContent(const Node& node, const Mapping& mapping, bool rests, Drawings& drawings) const {
  std::visit([&](const auto& kind) { add(node, kind, mapping, rests, drawings); }, node.kind);
}

void PageDrawing::addChildren(const Node& node, const Mapping& mapping, bool rests, Drawings& drawings) const {
  const Mapping content = contentMapping(node, mapping);
  std::vector<const Node*> all;  // from back to front
  for (const auto& gone : node.leaving) all.push_back(gone.get());
  for (const auto& child : node.children) all.push_back(child.get());
  const auto* layered = std::get_if<kinds::Layered>(&node.kind);
  const bool isBehind = layered && layered->side == kinds::Layered::Side::behind;
  std::ranges::stable_sort(all, [&](const Node* left, const Node* right) {
    return isBehind ? left->index > right->index : left->index < right->index;
  });
  for (const Node* child : all) add(*child, content, rests, drawings);
}

void PageDrawing::addLayer(const platform::LayerEffect& effect, Drawings children, Drawings& drawings) const {
  if (children.empty() || effect.opacity <= 0) return;
  if (isPlain(effect)) {
    std::ranges::move(children, std::back_inserter(drawings));
    return;
  }
  const Rect content = extentOf(children);
  drawings.push_back({Layer{effect}, content, extentWith(effect, content), std::move(children)});
}

Rect PageDrawing::frameOf(const Node& node, const Mapping& mapping, bool rests) const {
  const Rect place = node.current();
  Rect frame = mapping.at(Rect{0, 0, place.width, place.height});
  if (!rests || mapping.scaleY != 1) return frame;
  const auto whole = [&](double points) { return std::round(points * scale_) / scale_; };
  // Points are whole pixels where the scale is a whole number, so that sizes need no rounding there.
  const bool roundsSizes = scale_ != std::round(scale_);
  const double right = roundsSizes ? whole(frame.right()) : whole(frame.x) + frame.width;
  const double bottom = roundsSizes ? whole(frame.bottom()) : whole(frame.y) + frame.height;
  frame = {whole(frame.x), whole(frame.y), 0, 0};
  return {frame.x, frame.y, right - frame.x, bottom - frame.y};
}

platform::Path PageDrawing::outline(const Shape& shape, const Node& node, double inset, const Mapping& mapping,
                                    bool rests) const {
  Shape inner = shape;
  if (auto* rounded = std::get_if<RoundedRectangle>(&inner)) rounded->radius = std::max(rounded->radius - inset, 0.0);
  const Rect frame = frameOf(node, mapping, rests);
  const Point corner{mapping.scaleX < 0 ? frame.right() : frame.x, frame.y};
  const auto inside = [&](double length) { return std::max(length / mapping.scaleY - 2 * inset, 0.0); };
  const Rect within{inset, inset, inside(frame.width), inside(frame.height)};
  return pathOf(inner, within).transformed(mapping.scaleX, mapping.scaleY, corner);
}

// Half of a stroke lies outside its outline. Its outer edge comes to the nearest whole pixel, inwards when in doubt: a
// line of one pixel then fills one row of pixels instead of shading two.
double PageDrawing::sharpInset(double width, double inset, const Mapping& mapping) const {
  const double pixels = scale_ * mapping.scaleY;
  const double outside = (width / 2 - inset) * pixels;
  return width / 2 - std::ceil(outside - 0.5) / pixels;
}

void PageDrawing::add(const Node& node, const kinds::Text& text, const Mapping& mapping, bool rests,
                      Drawings& drawings) const {
  if (!node.setText.layout) return;
  const Rect frame = frameOf(node, mapping, rests);
  drawings.push_back(
      {DrawnText{node.setText.layout, {frame.x, frame.y}, mapping.scaleY, colorFrom(node.looks.current())},
       frame,
       grown(frame, text.style.font.size * glyphOverhang * mapping.scaleY),
       {}});
}

void PageDrawing::add(const Node& node, const kinds::Symbol& symbol, const Mapping& mapping, bool rests,
                      Drawings& drawings) const {
  if (!node.symbol) return;
  const Rect frame = frameOf(node, mapping, rests);
  const bool isMirrored = symbol.isMirrored && mapping.scaleX < 0;
  const double scaleX = isMirrored ? mapping.scaleX : std::abs(mapping.scaleX);
  const Point origin{isMirrored ? frame.right() : frame.x, frame.y};
  const double reach = symbol.font.size * mapping.scaleY;  // of strokes beyond the box
  for (const auto& part : node.symbol->parts) {
    auto color = colorFrom(node.looks.current());
    color.alpha *= part.opacity;
    auto path = part.path.transformed(scaleX, mapping.scaleY, origin);
    if (part.stroke) {
      auto stroke = *part.stroke;
      stroke.width *= mapping.scaleY;
      drawings.push_back({StrokedPath{std::move(path), color, stroke}, frame, grown(frame, reach * 0.25), {}});
    } else {
      drawings.push_back({FilledPath{std::move(path), color}, frame, grown(frame, reach * 0.25), {}});
    }
  }
}

void PageDrawing::add(const Node& node, const kinds::Picture& picture, const Mapping& mapping, bool rests,
                      Drawings& drawings) const {
  const Rect frame = frameOf(node, mapping, rests);
  const auto color = picture.isTemplate ? std::optional(colorFrom(node.looks.current())) : std::nullopt;
  drawings.push_back({DrawnImage{picture.image, color}, frame, frame, {}});
}

void PageDrawing::add(const Node& node, const kinds::Fill& fill, const Mapping& mapping, bool rests,
                      Drawings& drawings) const {
  const Rect frame = frameOf(node, mapping, rests);
  auto paint = paintFrom(node.looks.current(), fill, frame);
  if (const auto* color = std::get_if<platform::Color>(&paint); color && color->alpha == 0) return;
  if (auto* gradient = std::get_if<platform::LinearGradient>(&paint); gradient && mapping.scaleX < 0) {
    const auto mirrored = [&](double x) { return frame.x + frame.right() - x; };
    gradient->start.x = mirrored(gradient->start.x);
    gradient->end.x = mirrored(gradient->end.x);
  }
  drawings.push_back({FilledPath{outline(fill.shape, node, 0, mapping, rests), paint}, frame, frame, {}});
}

void PageDrawing::add(const Node& node, const kinds::Stroke& stroke, const Mapping& mapping, bool rests,
                      Drawings& drawings) const {
  const auto color = colorFrom(node.looks.current());
  const double width = strokeWidthFrom(node.looks.current());
  if (color.alpha == 0 || width == 0) return;
  const double inset = sharpInset(width, stroke.inset, mapping);
  const Rect frame = frameOf(node, mapping, rests);
  drawings.push_back({StrokedPath{outline(stroke.shape, node, inset, mapping, rests),
                                  color,
                                  {.width = width * mapping.scaleY, .roundEnds = false}},
                      frame,
                      grown(frame, width * mapping.scaleY),
                      {}});
}

void PageDrawing::add(const Node& node, const kinds::Divider&, const Mapping& mapping, bool rests,
                      Drawings& drawings) const {
  Rect line = frameOf(node, mapping, rests);
  line.height = std::max(std::round(line.height * scale_), 1.0) / scale_;
  drawings.push_back({FilledPath{platform::rectanglePath(line), colorFrom(node.looks.current())}, line, line, {}});
}

void PageDrawing::add(const Node& node, const kinds::Effect&, const Mapping& mapping, bool rests,
                      Drawings& drawings) const {
  auto effect = effectFrom(node.looks.current());
  if (effect.opacity == 0) return;
  effect.blurRadius *= mapping.scaleY;
  for (auto& shadow : effect.shadows) {
    shadow.radius *= mapping.scaleY;
    shadow.offset = {shadow.offset.x * mapping.scaleX, shadow.offset.y * mapping.scaleY};
  }
  Drawings children;
  addChildren(node, mapping, rests, children);
  addLayer(effect, std::move(children), drawings);
}

void PageDrawing::add(const Node& node, const kinds::Clip& clip, const Mapping& mapping, bool rests,
                      Drawings& drawings) const {
  Drawings children;
  addChildren(node, mapping, rests, children);
  if (children.empty()) return;
  const Rect frame = frameOf(node, mapping, rests);
  const Rect extent = extentOf(children).intersection(frame);
  drawings.push_back({Clipping{outline(clip.shape, node, 0, mapping, rests)}, frame, extent, std::move(children)});
}

void PageDrawing::add(const Node& node, const kinds::Scrolling&, const Mapping& mapping, bool rests,
                      Drawings& drawings) const {
  if (scrollRange(node) == 0) return addChildren(node, mapping, rests, drawings);
  Drawings children;
  addChildren(node, mapping, rests, children);
  const Rect frame = frameOf(node, mapping, rests);
  const Rect seen = viewOf(frame);
  const Rect extent = extentOf(children).intersection(seen);
  drawings.push_back({Clipping{platform::rectanglePath(seen)}, frame, extent, std::move(children)});
  addScrollBar(node, mapping, drawings);
}

void PageDrawing::addScrollBar(const Node& node, const Mapping& mapping, Drawings& drawings) const {
  // Its ends keep clear of round corners around it.
  constexpr double width = 3, margin = 2, endMargin = 6, leastLength = 16;
  const Rect place = node.current();
  const double track = std::max(place.height - 2 * endMargin, 0.0), range = scrollRange(node);
  const double length = std::min(std::max(track * place.height / (place.height + range), leastLength), track);
  const double y = endMargin + (track - length) * node.scrollOffset / range;
  const Rect bar = mapping.at(Rect{place.width - width - margin, y, width, length});
  const auto color = primary.opacity(0.35).in(node.environment.appearance);
  drawings.push_back({FilledPath{pathOf(Capsule{}, bar), color}, bar, bar, {}});
}

void PageDrawing::addPressable(const Node& node, const Mapping& mapping, bool rests, Drawings& drawings) const {
  constexpr double pressedOpacity = 0.7;
  Drawings children;
  addChildren(node, mapping, rests, children);
  addLayer({.shadows = {}, .opacity = node.isPressed ? pressedOpacity : 1}, std::move(children), drawings);
}

}  // namespace

Drawings drawingsOf(const Node& root, double scale) {
  Drawings drawings;
  PageDrawing(scale).add(root, Mapping{}, true, drawings);
  return drawings;
}

}  // namespace hushpane::declarative

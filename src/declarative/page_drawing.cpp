#include "declarative/page_drawing.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "declarative/looks.h"

namespace hushpane::declarative {

using platform::Point;
using platform::Rect;

namespace {

constexpr double blurReach = 3;        // standard deviations, beyond which a Gaussian is not seen
constexpr double glyphOverhang = 0.5;  // of the font size, how far glyphs may leave their line's box

// From a node's coordinates to the page's.
struct Mapping {
  double scaleX = 1;  // below 0 in a mirrored page
  double scaleY = 1;
  Point offset;

  Point at(Point point) const { return {point.x * scaleX + offset.x, point.y * scaleY + offset.y}; }
  Rect at(const Rect& rect) const {
    const Point first = at(Point{rect.x, rect.y});
    const double width = rect.width * std::abs(scaleX);
    return {scaleX < 0 ? first.x - width : first.x, first.y, width, rect.height * scaleY};
  }
  Mapping movedBy(Point by) const { return {scaleX, scaleY, at(by)}; }
  Mapping mirrored(double width) const { return {-scaleX, scaleY, at(Point{width, 0})}; }
  Mapping scaledBy(double factor, Point around) const {
    const Point origin{around.x * (1 - factor), around.y * (1 - factor)};
    return {scaleX * factor, scaleY * factor, at(origin)};
  }
};

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

class PageDrawing {
 public:
  explicit PageDrawing(double scale) : scale_(scale) {}

  void add(const Node& node, const Mapping& outer, bool rests, Drawings& drawings) const;

 private:
  void addContent(const Node& node, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void addChildren(const Node& node, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void addLayer(const platform::LayerEffect& effect, Drawings children, Drawings& drawings) const;

  void add(const Node& node, const kinds::Text& text, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Symbol& symbol, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Picture& picture, const Mapping& mapping, bool rests,
           Drawings& drawings) const;
  void add(const Node& node, const kinds::Fill& fill, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Stroke& stroke, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Divider& divider, const Mapping& mapping, bool rests,
           Drawings& drawings) const;
  void add(const Node& node, const kinds::Layered& layered, const Mapping& mapping, bool rests,
           Drawings& drawings) const;
  void add(const Node& node, const kinds::Effect& effect, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Offset& offset, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Scale& scale, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Clip& clip, const Mapping& mapping, bool rests, Drawings& drawings) const;
  void add(const Node& node, const kinds::Button& button, const Mapping& mapping, bool rests, Drawings& drawings) const;
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
  const Rect place = node.current();
  Mapping mapping = outer.movedBy({place.x, place.y});
  if (node.isMirrored) mapping = mapping.mirrored(place.width);
  const bool carriesContent =
      std::holds_alternative<kinds::Offset>(node.kind) || std::holds_alternative<kinds::Scale>(node.kind);
  const bool restsToo = rests && !node.place.isMoving() && !(carriesContent && node.looks.isMoving());
  if (!node.presence) return addContent(node, mapping, restsToo, drawings);

  const double away = 1 - node.presence->share.current().front();
  const TransitionEffect& effect = node.presence->effect;
  const Mapping moved = mapping.movedBy({effect.offset.x * away, effect.offset.y * away})
                            .scaledBy(std::max(platform::interpolate(1, effect.scale, away), 0.0),
                                      {place.width * effect.anchor.x, place.height * effect.anchor.y});
  Drawings children;
  addContent(node, moved, restsToo && effect.offset == Point{} && effect.scale == 1, children);
  const double opacity = std::clamp(platform::interpolate(1, effect.opacity, away), 0.0, 1.0);
  addLayer({.shadows = {}, .opacity = opacity}, std::move(children), drawings);
}

void PageDrawing::addContent(const Node& node, const Mapping& mapping, bool rests, Drawings& drawings) const {
  std::visit([&](const auto& kind) { add(node, kind, mapping, rests, drawings); }, node.kind);
}

void PageDrawing::addChildren(const Node& node, const Mapping& mapping, bool rests, Drawings& drawings) const {
  for (const auto& gone : node.leaving) add(*gone, mapping, rests, drawings);
  for (const auto& child : node.children) add(*child, mapping, rests, drawings);
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
  if (rests && mapping.scaleY == 1) {
    frame.x = std::round(frame.x * scale_) / scale_;
    frame.y = std::round(frame.y * scale_) / scale_;
  }
  return frame;
}

platform::Path PageDrawing::outline(const Shape& shape, const Node& node, double inset, const Mapping& mapping,
                                    bool rests) const {
  const Rect place = node.current();
  const Rect within{inset, inset, std::max(place.width - 2 * inset, 0.0), std::max(place.height - 2 * inset, 0.0)};
  Shape inner = shape;
  if (auto* rounded = std::get_if<RoundedRectangle>(&inner)) rounded->radius = std::max(rounded->radius - inset, 0.0);
  const Rect frame = frameOf(node, mapping, rests);
  const Point corner{mapping.scaleX < 0 ? frame.right() : frame.x, frame.y};
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
  if (!node.textLayout) return;
  const Rect frame = frameOf(node, mapping, rests);
  drawings.push_back({DrawnText{node.textLayout, {frame.x, frame.y}, mapping.scaleY, colorFrom(node.looks.current())},
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

void PageDrawing::add(const Node& node, const kinds::Layered& layered, const Mapping& mapping, bool rests,
                      Drawings& drawings) const {
  const bool isBehind = layered.side == kinds::Layered::Side::behind;
  if (isBehind && node.children.size() > 1) add(*node.children[1], mapping, rests, drawings);
  for (const auto& gone : node.leaving) add(*gone, mapping, rests, drawings);
  if (!node.children.empty()) add(*node.children[0], mapping, rests, drawings);
  if (!isBehind && node.children.size() > 1) add(*node.children[1], mapping, rests, drawings);
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

void PageDrawing::add(const Node& node, const kinds::Offset&, const Mapping& mapping, bool rests,
                      Drawings& drawings) const {
  addChildren(node, mapping.movedBy(offsetFrom(node.looks.current())), rests, drawings);
}

void PageDrawing::add(const Node& node, const kinds::Scale& scale, const Mapping& mapping, bool rests,
                      Drawings& drawings) const {
  const Rect place = node.current();
  const Point anchor{place.width * scale.anchor.x, place.height * scale.anchor.y};
  addChildren(node, mapping.scaledBy(scaleFrom(node.looks.current()), anchor), rests, drawings);
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

void PageDrawing::add(const Node& node, const kinds::Button&, const Mapping& mapping, bool rests,
                      Drawings& drawings) const {
  constexpr double pressedOpacity = 0.7;
  Drawings children;
  addChildren(node, mapping, rests, children);
  addLayer({.shadows = {}, .opacity = node.isPressed ? pressedOpacity : 1}, std::move(children), drawings);
}

}  // namespace

Drawings drawingsOf(const Node& root, platform::LayoutDirection direction, double scale) {
  Drawings drawings;
  const bool isMirrored = direction == platform::LayoutDirection::rightToLeft;
  Mapping mapping;
  if (isMirrored) mapping = mapping.mirrored(root.current().width);
  PageDrawing(scale).add(root, mapping, true, drawings);
  return drawings;
}

}  // namespace hushpane::declarative

#include "declarative/drawing.h"

#include <algorithm>
#include <utility>

namespace hushpane::declarative {

using platform::Canvas;
using platform::Point;
using platform::Rect;

namespace {

void include(Rect& all, const Rect& rect) {
  all = unionOf(all, rect);
}

// A change within a blur or a shadow reaches further than what changed.
bool spreads(const Drawing& drawing) {
  const auto* layer = std::get_if<Layer>(&drawing.what);
  return layer && (layer->effect.blurRadius > 0 || !layer->effect.shadows.empty());
}

void compare(const Drawings& before, const Drawings& after, Rect& all);

void compare(const Drawing& before, const Drawing& after, Rect& all) {
  if (!before.children.empty() && before.what == after.what && !spreads(before)) {
    Rect inside;
    compare(before.children, after.children, inside);
    return include(all, inside.intersection(unionOf(before.extent, after.extent)));
  }
  if (before == after) return;
  include(all, before.extent);
  include(all, after.extent);
}

// What stands at both ends of the two lists is taken as the same parts of the page.
void compare(const Drawings& before, const Drawings& after, Rect& all) {
  if (before.size() == after.size()) {
    for (std::size_t index = 0; index < before.size(); ++index) compare(before[index], after[index], all);
    return;
  }
  const auto [left, right] = std::ranges::mismatch(before, after);
  auto leftEnd = before.end();
  auto rightEnd = after.end();
  while (leftEnd != left && rightEnd != right && *(leftEnd - 1) == *(rightEnd - 1)) --leftEnd, --rightEnd;
  for (auto at = left; at != leftEnd; ++at) include(all, at->extent);
  for (auto at = right; at != rightEnd; ++at) include(all, at->extent);
}

void move(Point& point, Point offset) {
  point = {point.x + offset.x, point.y + offset.y};
}
void move(Rect& rect, Point offset) {
  rect.x += offset.x;
  rect.y += offset.y;
}
void move(FilledPath& fill, Point offset) {
  fill.path = fill.path.transformed(1, 1, offset);
  if (auto* gradient = std::get_if<platform::LinearGradient>(&fill.paint)) {
    move(gradient->start, offset);
    move(gradient->end, offset);
  }
}
void move(StrokedPath& stroke, Point offset) {
  stroke.path = stroke.path.transformed(1, 1, offset);
}
void move(DrawnText& text, Point offset) {
  move(text.origin, offset);
}
void move(DrawnImage&, Point) {}
void move(Layer&, Point) {}
void move(Clipping& clipping, Point offset) {
  clipping.path = clipping.path.transformed(1, 1, offset);
}

void drawOne(const Drawing&, const FilledPath& fill, Canvas& canvas, const Rect&) {
  canvas.fill(fill.path, fill.paint);
}
void drawOne(const Drawing&, const StrokedPath& stroke, Canvas& canvas, const Rect&) {
  canvas.stroke(stroke.path, stroke.color, stroke.stroke);
}
void drawOne(const Drawing&, const DrawnText& text, Canvas& canvas, const Rect&) {
  canvas.drawText(*text.layout, text.origin, text.scale, text.color);
}
void drawOne(const Drawing& drawing, const DrawnImage& image, Canvas& canvas, const Rect&) {
  if (image.templateColor)
    canvas.drawTemplate(*image.image, drawing.frame, *image.templateColor);
  else
    canvas.drawImage(*image.image, drawing.frame);
}
void drawOne(const Drawing& drawing, const Layer& layer, Canvas& canvas, const Rect& visible) {
  canvas.beginLayer(layer.effect, drawing.frame);
  // What lies outside may still be seen by its shadow.
  draw(drawing.children, canvas, spreads(drawing) ? drawing.extent : visible);
  canvas.endLayer();
}
void drawOne(const Drawing& drawing, const Clipping& clipping, Canvas& canvas, const Rect& visible) {
  canvas.clip(clipping.path);
  draw(drawing.children, canvas, visible.intersection(drawing.extent));
  canvas.restoreClip();
}

}  // namespace

Rect unionOf(const Rect& left, const Rect& right) {
  if (right.area() <= 0) return left;
  if (left.area() <= 0) return right;
  const double x = std::min(left.x, right.x), y = std::min(left.y, right.y);
  return {x, y, std::max(left.right(), right.right()) - x, std::max(left.bottom(), right.bottom()) - y};
}

Rect damage(const Drawings& before, const Drawings& after) {
  Rect all;
  compare(before, after, all);
  return all;
}

Drawings movedBy(Drawings drawings, Point offset) {
  for (auto& drawing : drawings) {
    std::visit([&](auto& what) { move(what, offset); }, drawing.what);
    move(drawing.frame, offset);
    move(drawing.extent, offset);
    drawing.children = movedBy(std::move(drawing.children), offset);
  }
  return drawings;
}

void draw(const Drawings& drawings, Canvas& canvas, const Rect& visible) {
  for (const auto& drawing : drawings) {
    if (drawing.extent.intersection(visible).area() <= 0) continue;
    std::visit([&](const auto& what) { drawOne(drawing, what, canvas, visible); }, drawing.what);
  }
}

Rect extentOf(const Drawings& drawings) {
  Rect all;
  for (const auto& drawing : drawings) include(all, drawing.extent);
  return all;
}

}  // namespace hushpane::declarative

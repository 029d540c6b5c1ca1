#include "declarative/symbol_shapes.h"

#include <cmath>
#include <initializer_list>
#include <numbers>
#include <utility>

namespace hushpane::declarative {

namespace {

using platform::Path;
using platform::Point;
using platform::Rect;

constexpr double quarterTurn = std::numbers::pi / 2;
constexpr double backgroundOpacity = 0.5;
constexpr double middleOpacity = 0.75;

SymbolPart lines(Path path, double line, double opacity = 1) {
  return {std::move(path), platform::Stroke{line, true}, opacity};
}

SymbolPart area(Path path, double opacity = 1) {
  return {std::move(path), std::nullopt, opacity};
}

Path lineThrough(std::initializer_list<Point> points) {
  Path path;
  for (const auto& point : points) path.lineTo(point);
  return path;
}

// Half a line inside, so that the line's outer edge runs along the rectangle.
Rect inside(const Rect& rect, double line) {
  return {rect.x + line / 2, rect.y + line / 2, rect.width - line, rect.height - line};
}

// A rectangle, or its outline, with that outer edge.
SymbolPart roundedRectangle(const Rect& rect, double radius, double line, SymbolVariant variant) {
  const auto style = platform::CornerStyle::circular;
  if (variant == SymbolVariant::filled) return area(platform::roundedRectanglePath(rect, radius, style));
  return lines(platform::roundedRectanglePath(inside(rect, line), radius - line / 2, style), line);
}

// Two rectangles; the one in front hides the lower right of the other and keeps a gap to it.
struct Pair {
  Rect back;
  Rect front;
  double radius = 0;
  double gap = 0;
};

// What is seen of the outline of the rectangle behind.
SymbolPart backOutline(const Pair& pair, double line) {
  const Rect back = inside(pair.back, line);
  const double radius = pair.radius - line / 2;
  const double endX = pair.front.x - pair.gap - line / 2;
  const double endY = pair.front.y - pair.gap - line / 2;
  Path path;
  path.moveTo({endX, back.bottom()});
  path.addArc({back.x + radius, back.bottom() - radius}, radius, quarterTurn, 2 * quarterTurn);
  path.addArc({back.x + radius, back.y + radius}, radius, 2 * quarterTurn, 3 * quarterTurn);
  path.addArc({back.right() - radius, back.y + radius}, radius, 3 * quarterTurn, 4 * quarterTurn);
  path.lineTo({back.right(), endY});
  return lines(std::move(path), line, backgroundOpacity);
}

// What is seen of the area of the rectangle behind.
SymbolPart backArea(const Pair& pair) {
  const auto& [back, front, radius, gap] = pair;
  const double around = radius + gap;
  Path path;
  path.moveTo({front.x - gap, back.bottom()});
  path.addArc({back.x + radius, back.bottom() - radius}, radius, quarterTurn, 2 * quarterTurn);
  path.addArc({back.x + radius, back.y + radius}, radius, 2 * quarterTurn, 3 * quarterTurn);
  path.addArc({back.right() - radius, back.y + radius}, radius, 3 * quarterTurn, 4 * quarterTurn);
  path.lineTo({back.right(), front.y - gap});
  path.addArc({front.x + radius, front.y + radius}, around, 3 * quarterTurn, 2 * quarterTurn);
  path.close();
  return area(std::move(path), backgroundOpacity);
}

SymbolPart backPart(const Pair& pair, double line, SymbolVariant variant) {
  return variant == SymbolVariant::filled ? backArea(pair) : backOutline(pair, line);
}

// A window with its title bar set off from its contents.
std::vector<SymbolPart> windowParts(const Rect& rect, double radius, double line, SymbolVariant variant) {
  const double bar = rect.y + 0.2 + line / 2;  // the lower edge of the title bar
  if (variant == SymbolVariant::plain)
    return {roundedRectangle(rect, radius, line, variant),
            lines(lineThrough({{rect.x + line / 2, bar}, {rect.right() - line / 2, bar}}), line)};
  Path title, contents;
  title.moveTo({rect.x, bar - line / 2});
  title.addArc({rect.x + radius, rect.y + radius}, radius, 2 * quarterTurn, 3 * quarterTurn);
  title.addArc({rect.right() - radius, rect.y + radius}, radius, 3 * quarterTurn, 4 * quarterTurn);
  title.lineTo({rect.right(), bar - line / 2}).close();
  contents.moveTo({rect.right(), bar + line / 2});
  contents.addArc({rect.right() - radius, rect.bottom() - radius}, radius, 0, quarterTurn);
  contents.addArc({rect.x + radius, rect.bottom() - radius}, radius, quarterTurn, 2 * quarterTurn);
  contents.lineTo({rect.x, bar + line / 2}).close();
  return {area(std::move(title)), area(std::move(contents))};
}

// Lines alone, moved so that their outer edge fills a box.
SymbolDrawing boxed(Path path, double line) {
  const Rect bounds = path.controlBounds();
  const Point offset{line / 2 - bounds.x, line / 2 - bounds.y};
  return {{bounds.width + line, bounds.height + line}, {lines(path.transformed(1, 1, offset), line)}};
}

// The outline of a gear around (0, 0), clockwise: teeth that grow narrower outwards.
Path gearOutline(double outer, double inner) {
  constexpr int teeth = 8;
  constexpr double step = 4 * quarterTurn / teeth;
  constexpr double tip = 0.17 * step;   // half of a tooth's angle at its tip
  constexpr double foot = 0.29 * step;  // and where it begins
  Path path;
  for (int tooth = 0; tooth < teeth; ++tooth) {
    const double middle = tooth * step;
    path.addArc({}, outer, middle - tip, middle + tip);
    path.addArc({}, inner, middle + foot, middle + step - foot);
  }
  return path.close();
}

}  // namespace

SymbolDrawing drawWindowOnRectangle(double line, SymbolVariant variant) {
  const Pair pair{{0, 0, 1.0, 0.76}, {0.28, 0.26, 1.04, 0.8}, 0.16, 0.075};
  SymbolDrawing drawing{{1.32, 1.06}, {backPart(pair, line, variant)}};
  for (auto& part : windowParts(pair.front, pair.radius, line, variant)) drawing.parts.push_back(std::move(part));
  return drawing;
}

SymbolDrawing drawRectangleOnRectangle(double line, SymbolVariant variant) {
  const Pair pair{{0, 0, 0.92, 0.7}, {0.34, 0.32, 0.92, 0.7}, 0.15, 0.075};
  return {{1.26, 1.02}, {backPart(pair, line, variant), roundedRectangle(pair.front, pair.radius, line, variant)}};
}

SymbolDrawing drawRectangleStack(double line, SymbolVariant variant) {
  constexpr double width = 1.22;
  constexpr double height = 1.04;
  // The upper edges of those behind, each further away and so narrower.
  const auto edge = [line](double inset, double y, double opacity) {
    return lines(lineThrough({{inset, y + line / 2}, {width - inset, y + line / 2}}), line, opacity);
  };
  return {{width, height},
          {edge(0.29, 0, backgroundOpacity), edge(0.19, 0.185, middleOpacity),
           roundedRectangle({0, 0.375, width, height - 0.375}, 0.16, line, variant)}};
}

SymbolDrawing drawCircle(double line, SymbolVariant variant) {
  const Rect box{0, 0, 1.04, 1.04};
  const auto part = variant == SymbolVariant::filled ? area(platform::ellipsePath(box))
                                                     : lines(platform::ellipsePath(inside(box, line)), line);
  return {{box.width, box.height}, {part}};
}

SymbolDrawing drawGear(double line, SymbolVariant variant) {
  constexpr double radius = 0.55;
  constexpr double toothHeight = 0.105;
  constexpr double hole = 0.17;
  constexpr platform::Size size{2 * radius, 2 * radius};
  constexpr Point middle{radius, radius};
  if (variant == SymbolVariant::plain) {
    const double outer = radius - line / 2;
    return {size,
            {lines(gearOutline(outer, outer - toothHeight).transformed(1, 1, middle), line),
             lines(Path().addArc(middle, hole, 0, 4 * quarterTurn).close(), line)}};
  }
  Path path = gearOutline(radius, radius - toothHeight).transformed(1, 1, middle);
  // Turning the other way leaves the hole open.
  path.add(Path().addArc(middle, hole + line / 2, 4 * quarterTurn, 0).close());
  return {size, {area(std::move(path))}};
}

SymbolDrawing drawPlus(double line, SymbolVariant) {
  constexpr double reach = 0.4;
  return boxed(lineThrough({{-reach, 0}, {reach, 0}}).moveTo({0, -reach}).lineTo({0, reach}), line);
}

SymbolDrawing drawMinus(double line, SymbolVariant) {
  return boxed(lineThrough({{-0.4, 0}, {0.4, 0}}), line);
}

SymbolDrawing drawCheckmark(double line, SymbolVariant) {
  return boxed(lineThrough({{0, 0.42}, {0.27, 0.72}, {0.72, 0}}), line);
}

SymbolDrawing drawChevronLeft(double line, SymbolVariant) {
  return boxed(lineThrough({{0.36, 0}, {0, 0.37}, {0.36, 0.74}}), line);
}

SymbolDrawing drawChevronDown(double line, SymbolVariant) {
  return boxed(lineThrough({{0, 0}, {0.37, 0.36}, {0.74, 0}}), line);
}

}  // namespace hushpane::declarative

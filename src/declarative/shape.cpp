#include "declarative/shape.h"

#include <algorithm>

namespace hushpane::declarative {

using platform::Path;
using platform::Point;
using platform::Rect;

namespace {

template <class... Functions>
struct Cases : Functions... {
  using Functions::operator()...;
};

double shorterSide(const Rect& rect) {
  return std::min(rect.width, rect.height);
}

Rect squareIn(const Rect& rect) {
  const double side = shorterSide(rect);
  return {rect.x + (rect.width - side) / 2, rect.y + (rect.height - side) / 2, side, side};
}

bool containsRounded(const Rect& rect, double radius, Point point) {
  if (!rect.contains(point)) return false;
  const double corner = std::min(radius, shorterSide(rect) / 2);
  const double dx = std::max({rect.x + corner - point.x, point.x - (rect.right() - corner), 0.0});
  const double dy = std::max({rect.y + corner - point.y, point.y - (rect.bottom() - corner), 0.0});
  return dx * dx + dy * dy <= corner * corner;
}

}  // namespace

Path pathOf(const Shape& shape, const Rect& rect) {
  return std::visit(Cases{
                        [&](const Rectangle&) { return platform::rectanglePath(rect); },
                        [&](const RoundedRectangle& rounded) {
                          return platform::roundedRectanglePath(rect, rounded.radius, rounded.style);
                        },
                        [&](const Capsule&) {
                          return platform::roundedRectanglePath(rect, shorterSide(rect) / 2,
                                                                platform::CornerStyle::continuous);
                        },
                        [&](const Circle&) { return platform::ellipsePath(squareIn(rect)); },
                        [&](const CustomShape& custom) { return custom.path(rect, custom.numbers); },
                    },
                    shape);
}

bool contains(const Shape& shape, const Rect& rect, Point point) {
  return std::visit(Cases{
                        [&](const Rectangle&) { return rect.contains(point); },
                        [&](const RoundedRectangle& rounded) { return containsRounded(rect, rounded.radius, point); },
                        [&](const Capsule&) { return containsRounded(rect, shorterSide(rect) / 2, point); },
                        [&](const Circle&) { return containsRounded(squareIn(rect), shorterSide(rect) / 2, point); },
                        [&](const CustomShape&) { return rect.contains(point); },
                    },
                    shape);
}

}  // namespace hushpane::declarative

#pragma once

#include <algorithm>

namespace hushpane::platform {

// Coordinates are points: origin at the top left of the main display, y growing downwards.

struct Point {
  double x = 0;
  double y = 0;
  bool operator==(const Point&) const = default;
};

struct Size {
  double width = 0;
  double height = 0;
  bool operator==(const Size&) const = default;
};

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  bool operator==(const Rect&) const = default;

  double right() const { return x + width; }
  double bottom() const { return y + height; }

  // Width times height, where a side that is not positive counts as 0.
  double area() const { return std::max(width, 0.0) * std::max(height, 0.0); }

  bool contains(Point point) const { return point.x >= x && point.x < right() && point.y >= y && point.y < bottom(); }

  // The common part; its sides are 0 or negative where there is none.
  Rect intersection(const Rect& other) const {
    const double left = std::max(x, other.x);
    const double top = std::max(y, other.y);
    return {left, top, std::min(right(), other.right()) - left, std::min(bottom(), other.bottom()) - top};
  }
};

}  // namespace hushpane::platform

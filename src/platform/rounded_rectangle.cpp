#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/path.h"

namespace hushpane::platform {

namespace {

constexpr double quarterTurn = std::numbers::pi / 2;

// How much earlier than the arc itself a continuous corner begins, in radii, where the edge is long enough.
constexpr double fullSmoothing = 0.6;
// What the smoothed stretch takes from the quarter turn of the arc, in radians for each radius of smoothing. More makes
// the curvature grow more evenly; at full smoothing on both edges a little of the arc is left between them.
constexpr double turnPerSmoothing = std::numbers::pi / 3;

// The stretch between an edge and the arc of a corner, for a radius of 1. Measured from the corner that the rectangle
// would have without rounding: `start`, `control1` and `control2` lie that far along the edge, so that the curvature
// begins at nothing; the arc takes over after a turn by `turn`.
struct Easing {
  double turn = 0;
  double start = 1;
  double control1 = 1;
  double control2 = 1;
};

// For an edge that leaves `room` radii, at least 1, to the corner.
Easing easingWithin(double room) {
  const double smoothing = std::min(fullSmoothing, room - 1);
  if (smoothing < 1e-6) return {};
  const double turn = smoothing * turnPerSmoothing;
  // The tangents at both ends meet in the second control, at the same distance from the arc's beginning at turn 0 and
  // from its point after the turn.
  const double tangent = std::tan(turn / 2);
  // The curvature at a cubic's end is 2/3 of the first control's distance from the last tangent, over the square of the
  // last control's distance from the end: 1 where the arc goes on.
  return {turn, 1 + smoothing, 1 - tangent + 1.5 * tangent * tangent / std::sin(turn), 1 - tangent};
}

// Draws the corners one after another, clockwise. `x` and `y` point from the corner into the edges, one unit long.
struct Corner {
  Point corner;
  Point x;
  Point y;

  Point at(double along, double across) const {
    return {corner.x + along * x.x + across * y.x, corner.y + along * x.y + across * y.y};
  }
};

// From the edge along `corner.y`, by the arc, to the edge along `corner.x`.
void addCorner(Path& path, const Corner& corner, double radius, const Easing& in, const Easing& out) {
  const auto at = [&](double along, double across) { return corner.at(along * radius, across * radius); };
  const Point center = at(1, 1);
  const double first = std::atan2(-corner.x.y, -corner.x.x);  // towards the point where the plain arc would begin
  path.lineTo(at(0, in.start));
  if (in.turn > 0)
    path.curveTo(at(0, in.control1), at(0, in.control2), at(1 - std::cos(in.turn), 1 - std::sin(in.turn)));
  path.addArc(center, radius, first + in.turn, first + quarterTurn - out.turn);
  if (out.turn > 0) path.curveTo(at(out.control2, 0), at(out.control1, 0), at(out.start, 0));
}

}  // namespace

Path roundedRectanglePath(const Rect& rect, double radius, CornerStyle style) {
  const double limited = std::min({radius, rect.width / 2, rect.height / 2});
  if (!(limited > 0)) return rectanglePath(rect);
  const bool isContinuous = style == CornerStyle::continuous;
  const Easing across = isContinuous ? easingWithin(rect.width / 2 / limited) : Easing{};
  const Easing down = isContinuous ? easingWithin(rect.height / 2 / limited) : Easing{};
  Path path;
  addCorner(path, {{rect.x, rect.y}, {1, 0}, {0, 1}}, limited, down, across);
  addCorner(path, {{rect.right(), rect.y}, {0, 1}, {-1, 0}}, limited, across, down);
  addCorner(path, {{rect.right(), rect.bottom()}, {-1, 0}, {0, -1}}, limited, down, across);
  addCorner(path, {{rect.x, rect.bottom()}, {0, -1}, {1, 0}}, limited, across, down);
  return path.close();
}

}  // namespace hushpane::platform

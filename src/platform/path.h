#pragma once

#include <array>
#include <vector>

#include "platform/geometry.h"

namespace hushpane::platform {

// An outline of straight lines and cubic Bézier curves, in points.
class Path {
 public:
  enum class Verb { move, line, curve, close };
  static constexpr int pointCount(Verb verb) { return verb == Verb::curve ? 3 : verb == Verb::close ? 0 : 1; }
  // `points` holds, for each verb, the points it takes in order: move and line 1, curve 3 (two controls, then the end),
  // close none.
  struct Segment {
    Verb verb = Verb::move;
    std::array<Point, 3> points;
    bool operator==(const Segment&) const = default;
  };

  bool operator==(const Path&) const = default;
  bool isEmpty() const { return segments_.empty(); }
  const std::vector<Segment>& segments() const { return segments_; }

  Path& moveTo(Point point);
  Path& lineTo(Point point);
  Path& curveTo(Point control1, Point control2, Point end);
  // An arc of the circle around `center`; angles in radians from the positive x axis, growing clockwise on the screen
  // (towards positive y). A line joins it to the point before, if there is one; it runs towards growing angles when
  // `end` is greater, else towards smaller ones.
  Path& addArc(Point center, double radius, double start, double end);
  Path& close();
  Path& add(const Path& other);

  // Every point (x, y) becomes (x * scaleX + offset.x, y * scaleY + offset.y).
  Path transformed(double scaleX, double scaleY, Point offset) const;
  // The smallest rectangle around all points and controls; the outline never leaves it.
  Rect controlBounds() const;

 private:
  std::vector<Segment> segments_;
};

Path rectanglePath(const Rect& rect);
Path ellipsePath(const Rect& rect);

// A corner of a rectangle where edge and arc meet: at once (circular), or over a stretch in which the curvature grows
// from nothing to that of the arc (continuous), which begins up to 1.6 radii from the corner where the edge is so long.
enum class CornerStyle { circular, continuous };

// Radii of more than half a side count as half of the shorter side.
Path roundedRectanglePath(const Rect& rect, double radius, CornerStyle style);

}  // namespace hushpane::platform

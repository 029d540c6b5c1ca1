#include "platform/path.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace hushpane::platform {
namespace {

Point between(Point a, Point b, double share) {
  return {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share};
}

double distance(Point a, Point b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

Point onCurve(Point start, const std::array<Point, 3>& points, double share) {
  const Point first = between(start, points[0], share);
  const Point second = between(points[0], points[1], share);
  const Point third = between(points[1], points[2], share);
  return between(between(first, second, share), between(second, third, share), share);
}

// Points along the outline about `step` apart.
std::vector<Point> walk(const Path& path, double step) {
  std::vector<Point> points;
  Point last, start;
  for (const auto& segment : path.segments()) {
    if (segment.verb == Path::Verb::move) points.push_back(last = start = segment.points[0]);
    if (segment.verb == Path::Verb::move) continue;
    const bool isCurve = segment.verb == Path::Verb::curve;
    const Point end = segment.verb == Path::Verb::close ? start : segment.points[isCurve ? 2 : 0];
    const double length = isCurve ? distance(last, segment.points[0]) + distance(segment.points[0], segment.points[1]) +
                                        distance(segment.points[1], end)
                                  : distance(last, end);
    const int count = static_cast<int>(std::ceil(length / step));
    for (int index = 1; index <= count; ++index) {
      const double share = static_cast<double>(index) / count;
      points.push_back(isCurve ? onCurve(last, segment.points, share) : between(last, end, share));
    }
    last = end;
  }
  return points;
}

double turnAt(Point a, Point b, Point c) {
  const double before = std::atan2(b.y - a.y, b.x - a.x);
  return std::remainder(std::atan2(c.y - b.y, c.x - b.x) - before, 2 * std::numbers::pi);
}

// Turn per length, by differences.
std::vector<double> curvatures(const Path& path, double step) {
  const auto points = walk(path, step);
  std::vector<double> found;
  for (std::size_t index = 1; index + 1 < points.size(); ++index)
    found.push_back(turnAt(points[index - 1], points[index], points[index + 1]) /
                    ((distance(points[index - 1], points[index]) + distance(points[index], points[index + 1])) / 2));
  return found;
}

double largestJump(const std::vector<double>& values) {
  double jump = 0;
  for (std::size_t index = 1; index < values.size(); ++index)
    jump = std::max(jump, std::abs(values[index] - values[index - 1]));
  return jump;
}

Rect extents(const Path& path) {
  const auto points = walk(path, 0.05);
  const auto [left, right] = std::ranges::minmax(points, {}, &Point::x);
  const auto [top, bottom] = std::ranges::minmax(points, {}, &Point::y);
  return {left.x, top.y, right.x - left.x, bottom.y - top.y};
}

bool isNear(const Rect& a, const Rect& b) {
  return distance({a.x, a.y}, {b.x, b.y}) < 1e-6 && distance({a.width, a.height}, {b.width, b.height}) < 1e-6;
}

constexpr double radius = 20;

TEST(PathTest, ContinuousCornersBendWithoutAJump) {
  const Rect rect{5, 7, 150, 110};
  const auto continuous = curvatures(roundedRectanglePath(rect, radius, CornerStyle::continuous), 0.02);
  const auto circular = curvatures(roundedRectanglePath(rect, radius, CornerStyle::circular), 0.02);
  EXPECT_LT(largestJump(continuous), 0.05 / radius);
  EXPECT_GT(largestJump(circular), 0.3 / radius) << "an arc sets in at once";
  EXPECT_LT(std::ranges::max(continuous), 1.3 / radius);
  EXPECT_GT(std::ranges::min(continuous), -0.01 / radius) << "no edge bends outwards";
}

// How far from the corner at the top left the outline leaves the edges: along the upper one, and along the left one.
Size roundedBeyond(const Rect& rect, CornerStyle style) {
  Size size;
  for (const auto& point : walk(roundedRectanglePath(rect, radius, style), 0.01)) {
    if (point.x > rect.x + rect.width / 2 || point.y > rect.y + rect.height / 2) continue;
    if (point.y > rect.y + 1e-6) size.width = std::max(size.width, point.x - rect.x);
    if (point.x > rect.x + 1e-6) size.height = std::max(size.height, point.y - rect.y);
  }
  return size;
}

TEST(PathTest, AContinuousCornerBeginsEarlierWhereItsEdgeHasTheRoom) {
  const auto roomy = roundedBeyond({0, 0, 200, 100}, CornerStyle::continuous);
  EXPECT_NEAR(roomy.width, 1.6 * radius, 0.5);
  EXPECT_NEAR(roomy.height, 1.6 * radius, 0.5);
  const auto flat = roundedBeyond({0, 0, 200, 50}, CornerStyle::continuous);
  EXPECT_NEAR(flat.width, 1.6 * radius, 0.5);
  EXPECT_NEAR(flat.height, 25, 0.5) << "no further than half of the edge";
  const auto circular = roundedBeyond({0, 0, 200, 100}, CornerStyle::circular);
  EXPECT_NEAR(circular.width, radius, 0.1);
}

TEST(PathTest, ACapsuleKeepsItsRoundEndsAndEasesIntoItsLongEdges) {
  const Rect rect{10, 10, 120, 2 * radius};
  for (const auto& point : walk(roundedRectanglePath(rect, radius, CornerStyle::continuous), 0.05))
    if (point.x < rect.x + radius / 4) {
      EXPECT_NEAR(distance(point, {rect.x + radius, rect.y + radius}), radius, 0.01);
    }
  EXPECT_NEAR(roundedBeyond(rect, CornerStyle::continuous).width, 1.6 * radius, 0.5);
  const Rect square{0, 0, 2 * radius, 2 * radius};
  for (const auto& point : walk(roundedRectanglePath(square, 500, CornerStyle::continuous), 0.5))
    EXPECT_NEAR(distance(point, {radius, radius}), radius, 0.01) << "nothing is left but the circle";
}

TEST(PathTest, OutlinesFillTheirRectangle) {
  const Rect rect{3, -4, 61, 37};
  for (const auto style : {CornerStyle::circular, CornerStyle::continuous})
    for (const double corner : {0.0, 6.0, 12.0, 18.5, 400.0})
      EXPECT_TRUE(isNear(extents(roundedRectanglePath(rect, corner, style)), rect)) << corner;
  EXPECT_TRUE(isNear(extents(ellipsePath(rect)), rect));
  EXPECT_TRUE(isNear(rectanglePath(rect).controlBounds(), rect));
}

TEST(PathTest, RectanglesWithoutAreaAreOutlinesOfFiniteNumbers) {
  for (const Rect& rect : {Rect{1, 2, 0, 0}, Rect{1, 2, 30, 0}, Rect{1, 2, -5, 10}})
    for (const double corner : {0.0, 5.0, -5.0, std::nan("")})
      for (const auto& point : walk(roundedRectanglePath(rect, corner, CornerStyle::continuous), 0.5))
        EXPECT_TRUE(std::isfinite(point.x) && std::isfinite(point.y));
}

TEST(PathTest, ArcsRunTheWayTheirAnglesDo) {
  for (const double end : {2.5, -2.5, 6.0}) {
    const auto points = walk(Path().addArc({1, 2}, 10, 0.5, end), 0.1);
    for (const auto& point : points) EXPECT_NEAR(distance(point, {1, 2}), 10, 0.01);
    EXPECT_NEAR(distance(points.front(), {1 + 10 * std::cos(0.5), 2 + 10 * std::sin(0.5)}), 0, 1e-9);
    EXPECT_NEAR(distance(points.back(), {1 + 10 * std::cos(end), 2 + 10 * std::sin(end)}), 0, 1e-9);
    EXPECT_GT(turnAt(points[0], points[1], points[2]) * (end - 0.5), 0);
  }
  const auto joined = Path().moveTo({}).addArc({10, 0}, 5, 0, 1);
  EXPECT_EQ(joined.segments()[1].verb, Path::Verb::line);
}

}  // namespace
}  // namespace hushpane::platform

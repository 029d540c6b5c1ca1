#include "platform/path.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hushpane::platform {

namespace {

constexpr double quarterTurn = std::numbers::pi / 2;

Point onCircle(Point center, double radius, double angle) {
  return {center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)};
}

// Whether the outline has reached that point already, but for the rounding of angles.
bool endsAt(const std::vector<Path::Segment>& segments, Point point) {
  if (segments.empty() || segments.back().verb == Path::Verb::close) return false;
  const auto& last = segments.back();
  const Point end = last.points[static_cast<std::size_t>(Path::pointCount(last.verb)) - 1];
  return std::hypot(end.x - point.x, end.y - point.y) < 1e-9;
}

}  // namespace

Path& Path::moveTo(Point point) {
  segments_.push_back({Verb::move, {point}});
  return *this;
}

Path& Path::lineTo(Point point) {
  segments_.push_back({segments_.empty() ? Verb::move : Verb::line, {point}});
  return *this;
}

Path& Path::curveTo(Point control1, Point control2, Point end) {
  if (segments_.empty()) moveTo(control1);
  segments_.push_back({Verb::curve, {control1, control2, end}});
  return *this;
}

Path& Path::addArc(Point center, double radius, double start, double end) {
  const Point begin = onCircle(center, radius, start);
  if (!endsAt(segments_, begin)) lineTo(begin);
  const int pieces = static_cast<int>(std::ceil(std::abs(end - start) / quarterTurn - 1e-9));
  const double step = pieces > 0 ? (end - start) / pieces : 0;
  // Controls at this length along the tangents let the middle of a piece lie on the circle.
  const double length = radius * 4 / 3 * std::tan(step / 4);
  for (int piece = 0; piece < pieces; ++piece) {
    const double from = start + piece * step;
    const double to = from + step;
    const Point first = onCircle(center, radius, from);
    const Point last = onCircle(center, radius, to);
    curveTo({first.x - length * std::sin(from), first.y + length * std::cos(from)},
            {last.x + length * std::sin(to), last.y - length * std::cos(to)}, last);
  }
  return *this;
}

Path& Path::close() {
  if (!segments_.empty()) segments_.push_back({Verb::close, {}});
  return *this;
}

Path& Path::add(const Path& other) {
  segments_.insert(segments_.end(), other.segments_.begin(), other.segments_.end());
  return *this;
}

Path Path::transformed(double scaleX, double scaleY, Point offset) const {
  Path result = *this;
  for (auto& segment : result.segments_)
    for (int index = 0; index < pointCount(segment.verb); ++index) {
      auto& point = segment.points[static_cast<std::size_t>(index)];
      point = {point.x * scaleX + offset.x, point.y * scaleY + offset.y};
    }
  return result;
}

Rect Path::controlBounds() const {
  bool isFirst = true;
  Point least, most;
  for (const auto& segment : segments_)
    for (int index = 0; index < pointCount(segment.verb); ++index) {
      const Point point = segment.points[static_cast<std::size_t>(index)];
      least = isFirst ? point : Point{std::min(least.x, point.x), std::min(least.y, point.y)};
      most = isFirst ? point : Point{std::max(most.x, point.x), std::max(most.y, point.y)};
      isFirst = false;
    }
  return {least.x, least.y, most.x - least.x, most.y - least.y};
}

Path rectanglePath(const Rect& rect) {
  return Path()
      .moveTo({rect.x, rect.y})
      .lineTo({rect.right(), rect.y})
      .lineTo({rect.right(), rect.bottom()})
      .lineTo({rect.x, rect.bottom()})
      .close();
}

Path ellipsePath(const Rect& rect) {
  const Point center{rect.x + rect.width / 2, rect.y + rect.height / 2};
  return Path().addArc({0, 0}, 1, 0, 4 * quarterTurn).close().transformed(rect.width / 2, rect.height / 2, center);
}

}  // namespace hushpane::platform

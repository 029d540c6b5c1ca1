#include "desktops/shared/cairo_path.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace hushpane::desktops {

namespace {

using platform::Path;
using platform::Point;

constexpr double farthest = 4e6;  // cairo counts up to 2^23

Point placed(Point point, double scale) {
  return {std::clamp(point.x * scale, -farthest, farthest), std::clamp(point.y * scale, -farthest, farthest)};
}

bool isFinite(const Path& path) {
  for (const auto& segment : path.segments())
    for (int index = 0; index < Path::pointCount(segment.verb); ++index) {
      const auto& point = segment.points[static_cast<std::size_t>(index)];
      if (!std::isfinite(point.x) || !std::isfinite(point.y)) return false;
    }
  return true;
}

void addSegment(const ContextPtr& context, const Path::Segment& segment, double scale) {
  const auto& points = segment.points;
  const Point first = placed(points[0], scale);
  switch (segment.verb) {
    case Path::Verb::move: context->move_to(first.x, first.y); break;
    case Path::Verb::line: context->line_to(first.x, first.y); break;
    case Path::Verb::close: context->close_path(); break;
    case Path::Verb::curve: {
      const Point second = placed(points[1], scale);
      const Point end = placed(points[2], scale);
      context->curve_to(first.x, first.y, second.x, second.y, end.x, end.y);
    }
  }
}

// The rectangle that the path is, drawn in the order of platform::rectanglePath().
std::optional<platform::Rect> uprightRectangle(const Path& path) {
  using enum Path::Verb;
  constexpr std::array verbs{move, line, line, line, close};
  const auto& segments = path.segments();
  if (!std::ranges::equal(segments, verbs, {}, &Path::Segment::verb)) return std::nullopt;
  const auto corner = [&segments](std::size_t index) { return segments[index].points[0]; };
  const bool isUpright = corner(0).y == corner(1).y && corner(1).x == corner(2).x && corner(2).y == corner(3).y &&
                         corner(3).x == corner(0).x;
  if (!isUpright) return std::nullopt;
  return path.controlBounds();
}

void addSharpEdges(const ContextPtr& context, const platform::Rect& rect, double scale) {
  const Point start = placed({rect.x, rect.y}, scale);
  const Point end = placed({rect.right(), rect.bottom()}, scale);
  const double left = std::round(start.x);
  const double top = std::round(start.y);
  const double width = std::max(std::round(end.x) - left, rect.width > 0 ? 1.0 : 0.0);
  const double height = std::max(std::round(end.y) - top, rect.height > 0 ? 1.0 : 0.0);
  context->rectangle(left, top, width, height);
}

}  // namespace

bool addPath(const ContextPtr& context, const Path& path, double scale) {
  if (path.isEmpty() || !isFinite(path)) return false;
  for (const auto& segment : path.segments()) addSegment(context, segment, scale);
  return true;
}

bool addSharpPath(const ContextPtr& context, const Path& path, double scale) {
  if (!isFinite(path)) return false;
  const auto rectangle = uprightRectangle(path);
  if (!rectangle) return addPath(context, path, scale);
  addSharpEdges(context, *rectangle, scale);
  return true;
}

}  // namespace hushpane::desktops

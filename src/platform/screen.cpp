#include "platform/screen.h"

#include <algorithm>
#include <utility>

namespace hushpane::platform {

namespace {

// 0 inside.
double squaredDistance(Point point, const Rect& rect) {
  const double across = std::max({rect.x - point.x, 0.0, point.x - rect.right()});
  const double down = std::max({rect.y - point.y, 0.0, point.y - rect.bottom()});
  return across * across + down * down;
}

}  // namespace

double Screens::scaleOf(const Rect& area) const {
  const Point middle{area.x + area.width / 2, area.y + area.height / 2};
  const auto nearest = std::ranges::min_element(screens(), {}, [middle](const Screen& screen) {
    return std::pair(!screen.frame.contains(middle), squaredDistance(middle, screen.frame));
  });
  return nearest == screens().end() ? 1 : nearest->scale;
}

}  // namespace hushpane::platform

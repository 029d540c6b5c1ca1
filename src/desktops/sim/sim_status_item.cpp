#include "desktops/sim/sim_status_item.h"

#include <utility>

namespace hushpane::sim {

namespace {
constexpr double itemWidth = 36, distanceFromEnd = 172;  // points
}

std::optional<platform::Rect> SimStatusItem::barFrame() const {
  if (bar_ == Bar::none || screens_.screens().empty()) return std::nullopt;
  const auto& screen = screens_.screens().front().frame;
  const double y = bar_ == Bar::top ? screen.y : screen.bottom() - barHeight;
  return platform::Rect{screen.x, y, screen.width, barHeight};
}

std::optional<platform::Rect> SimStatusItem::frame() const {
  const auto bar = barFrame();
  if (!bar || !image_.draw || isFrameUntold_) return std::nullopt;
  return platform::Rect{bar->right() - distanceFromEnd - itemWidth, bar->y, itemWidth, bar->height};
}

void SimStatusItem::click(std::optional<platform::Point> point) {
  if (!isShown()) return;
  queue_.async([this, point] {
    if (const auto handler = handler_) handler(point);
  });
}

void SimStatusItem::setHovered(bool isHovered) {
  if (std::exchange(isHovered_, isHovered) == isHovered) return;
  if (const auto handler = hoverHandler_) handler(isHovered);
}

}  // namespace hushpane::sim

#include "app/panel_placement.h"

#include <algorithm>

namespace hushpane::placement {

using platform::Rect;
using platform::Size;

namespace {

double roomBelow(const Rect& label, const Rect& visible, double distance) {
  return visible.bottom() - distance - label.bottom();
}

double roomAbove(const Rect& label, const Rect& visible, double distance) {
  return label.y - visible.y - distance;
}

// Within [low, high], and at the low end where that is impossible.
double within(double value, double low, double high) {
  return std::max(low, std::min(value, high));
}

}  // namespace

bool isAbove(const Rect& anchor, const Rect& display) {
  return anchor.y + anchor.height / 2 > display.y + display.height / 2;
}

Rect beside(const Rect& anchor, Size size, const Rect& display, const Rect& visible, double distance) {
  const double x =
      within(anchor.x + (anchor.width - size.width) / 2, visible.x + distance, visible.right() - distance - size.width);
  const double wanted = isAbove(anchor, display) ? anchor.y - distance - size.height : anchor.bottom() + distance;
  const double y = within(wanted, visible.y + distance, visible.bottom() - distance - size.height);
  return {x, y, size.width, size.height};
}

double room(const Rect& label, const Rect& visible, double distance) {
  return std::max(roomBelow(label, visible, distance), roomAbove(label, visible, distance));
}

Rect pullDown(const Rect& label, Size size, const Rect& visible, double distance) {
  const double below = roomBelow(label, visible, distance), above = roomAbove(label, visible, distance);
  const double height = std::min(size.height, std::max(below, above));
  const double x = within(label.x, visible.x + distance, visible.right() - distance - size.width);
  const bool opensDown = height <= below || below >= above;
  return {x, opensDown ? label.bottom() : label.y - height, size.width, height};
}

Rect corner(const Rect& display, const Rect& visible) {
  const bool isAtLeft = visible.x > display.x && visible.right() >= display.right();
  const bool isAtBottom = visible.y <= display.y && visible.bottom() < display.bottom();
  return {isAtLeft ? visible.x : visible.right(), isAtBottom ? visible.bottom() : visible.y, 0, 0};
}

}  // namespace hushpane::placement

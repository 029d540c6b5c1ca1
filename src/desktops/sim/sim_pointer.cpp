#include "desktops/sim/sim_pointer.h"

#include <algorithm>
#include <utility>

namespace hushpane::sim {

using platform::Point;

namespace {

bool isShown(const SimPanels& panels, const SimPanel* panel) {
  return std::ranges::find(panels.shown(), panel) != panels.shown().end();
}

Point within(const SimPanel& panel, Point point) {
  return {point.x - panel.frame().x, point.y - panel.frame().y};
}

}  // namespace

bool SimPointer::isIconAt(Point point) const {
  const auto icon = statusItem_.frame();
  return icon && icon->contains(point);
}

void SimPointer::moveTo(Point point) {
  const double deltaX = point.x - monitors_.mouseLocation().x;
  monitors_.setMouseLocation(point);
  monitors_.moveMouse(deltaX);
  queue_.async([this, point] { meet(point); });
}

void SimPointer::meet(Point point) {
  auto* const beneath = isShown(panels_, pressed_) ? pressed_ : panels_.at(point);
  auto* const before = std::exchange(hovered_, beneath);
  if (before != beneath && isShown(panels_, before)) before->contents().pointerExited();
  statusItem_.setHovered(!beneath && isIconAt(point));
  if (isShown(panels_, beneath)) beneath->contents().pointerMoved(within(*beneath, point));
}

void SimPointer::tellMonitors(platform::EventType type) {
  const bool isOwn = panels_.at(monitors_.mouseLocation()) || isIconAt(monitors_.mouseLocation());
  monitors_.pressButton(
      type, isOwn ? SimEventMonitors::KeyboardOwner::ownProgram : SimEventMonitors::KeyboardOwner::otherProgram);
}

void SimPointer::press() {
  tellMonitors(platform::EventType::leftMouseDown);
  queue_.async([this, point = monitors_.mouseLocation()] {
    pressed_ = panels_.at(point);
    isIconPressed_ = !pressed_ && isIconAt(point);
    if (pressed_) pressed_->contents().pointerDown(within(*pressed_, point));
  });
}

void SimPointer::release() {
  queue_.async([this, point = monitors_.mouseLocation()] {
    auto* const panel = std::exchange(pressed_, nullptr);
    if (isShown(panels_, panel)) panel->contents().pointerUp(within(*panel, point));
    if (std::exchange(isIconPressed_, false) && isIconAt(point)) statusItem_.click(point);
  });
}

void SimPointer::click(Point point) {
  moveTo(point);
  press();
  release();
}

void SimPointer::pressRightButton() {
  tellMonitors(platform::EventType::rightMouseDown);
}

void SimPointer::scroll(double delta) {
  queue_.async([this, delta, point = monitors_.mouseLocation()] {
    if (auto* const panel = panels_.at(point)) panel->contents().scrolled(delta);
  });
}

}  // namespace hushpane::sim

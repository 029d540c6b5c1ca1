#include "input/mouse_shake_detector.h"

#include <cmath>

namespace hushpane {

using platform::Event;
using platform::EventType;

void MouseShakeDetector::start() {
  if (monitor_) return;
  monitor_ = platform_.eventMonitors().addGlobalMonitor(
      platform::maskOf(EventType::mouseMoved),
      lifetime_.weak([this](const Event& event) { mouseMoved(event.deltaX); }));
}

void MouseShakeDetector::stop() {
  monitor_.reset();
  beginStroke(0, 0);
  strokeTimes_.clear();
}

void MouseShakeDetector::mouseMoved(double deltaX) {
  const double now = platform_.mainQueue().now();
  if (!(now - lastFiredAt_ > debounceInterval)) return;
  const double distance = std::abs(deltaX);
  if (!(distance > leastMovement)) return;
  const double direction = deltaX > 0 ? 1 : -1;
  if (direction == currentDirection_) {
    currentDistance_ += distance;
    return;
  }
  if (currentDirection_ != 0 && currentDistance_ >= minStrokeDistance) {
    countReversal(now);
    if (std::ssize(strokeTimes_) >= strokesRequired) return recognise(now);
  }
  beginStroke(direction, distance);
}

void MouseShakeDetector::beginStroke(double direction, double distance) {
  currentDirection_ = direction;
  currentDistance_ = distance;
}

void MouseShakeDetector::countReversal(double now) {
  strokeTimes_.push_back(now);
  std::erase_if(strokeTimes_, [now](double time) { return now - time > timeWindow; });
}

void MouseShakeDetector::recognise(double now) {
  lastFiredAt_ = now;
  beginStroke(0, 0);
  strokeTimes_.clear();
  platform_.mainQueue().async(lifetime_.weak([this] {
    if (const auto callback = onShake) callback();
  }));
}

}  // namespace hushpane

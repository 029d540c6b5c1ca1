#pragma once

#include <functional>
#include <limits>
#include <vector>

#include "platform/lifetime.h"
#include "platform/platform.h"

namespace hushpane {

// Recognises the mouse being shaken from side to side: enough reversals within a short time, each at the end of a
// stroke that was long enough. Then it is deaf for a while. Movement over the program's own windows and dragging do not
// count, nor does vertical movement.
class MouseShakeDetector {
 public:
  static constexpr int strokesRequired = 6;
  static constexpr double minStrokeDistance = 60;  // points
  static constexpr double timeWindow = 1;          // seconds
  static constexpr double debounceInterval = 1.5;  // seconds of deafness after a shake

  explicit MouseShakeDetector(platform::Platform& platform) : platform_(platform) {}

  // Called from the main queue, one turn after the movement that completed a shake.
  std::function<void()> onShake;

  void start();
  // Forgets the stroke in progress and the reversals, but not when the last shake was.
  void stop();

 private:
  static constexpr double leastMovement = 0.5;  // points in one event; what is not more is ignored

  void mouseMoved(double deltaX);
  void beginStroke(double direction, double distance);
  void countReversal(double now);
  void recognise(double now);

  platform::Platform& platform_;
  double currentDirection_ = 0;  // of the stroke in progress: 1 rightwards, -1 leftwards, 0 none
  double currentDistance_ = 0;   // points
  std::vector<double> strokeTimes_;
  double lastFiredAt_ = -std::numeric_limits<double>::infinity();
  platform::Token monitor_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane

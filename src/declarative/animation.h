#pragma once

#include <variant>
#include <vector>

#include "platform/animation.h"

namespace hushpane::declarative {

// Along a cubic curve within a time.
struct Curve {
  platform::TimingFunction timing = platform::TimingFunction::easeInEaseOut;
  double duration = 0;  // seconds
  bool operator==(const Curve&) const = default;
};

// A damped harmonic oscillator of unit mass: without damping, one swing takes `response` seconds; with a damping
// fraction of 1 it comes to rest without swinging over.
struct Spring {
  double response = 0.5;  // seconds
  double dampingFraction = 1;
  bool operator==(const Spring&) const = default;
};

struct Animation {
  std::variant<Curve, Spring> course;
  bool repeatsForever = false;  // there and back again; of curves only
  bool operator==(const Animation&) const = default;
};

constexpr Animation easeOut(double duration) {
  return {Curve{platform::TimingFunction::easeOut, duration}};
}
constexpr Animation easeInOut(double duration) {
  return {Curve{platform::TimingFunction::easeInEaseOut, duration}};
}
constexpr Animation spring(double response, double dampingFraction) {
  return {Spring{response, dampingFraction}};
}
constexpr Animation repeatingForever(Animation animation) {
  animation.repeatsForever = true;
  return animation;
}

using Numbers = std::vector<double>;

// Numbers that move together: a colour, a frame, a fade. Times are seconds of one monotonic clock.
class Motion {
 public:
  explicit Motion(Numbers value) : start_(value), target_(value), current_(std::move(value)) {}

  const Numbers& target() const { return target_; }
  // As of the last call of advance() or of a change.
  const Numbers& current() const { return current_; }
  const Numbers& velocity() const { return velocity_; }  // per second; empty: at rest
  bool isMoving() const { return isMoving_; }

  // There at once.
  void set(Numbers value);
  // Towards `target` from where it is now. A spring takes the present speed with it.
  void animate(Numbers target, const Animation& animation, double now);
  // The same from a place and with a speed that something else had. All of the same length.
  void animate(Numbers from, Numbers velocity, Numbers target, const Animation& animation, double now);
  // Moves on to that time; comes to rest exactly at the target.
  void advance(double now);

 private:
  void follow(const Curve& curve, double elapsed);
  void follow(const Spring& spring, double elapsed);
  void rest();

  Numbers start_;
  Numbers startVelocity_;
  Numbers target_;
  Numbers current_;
  Numbers velocity_;
  Animation animation_{};
  double startTime_ = 0;
  bool isMoving_ = false;
};

}  // namespace hushpane::declarative

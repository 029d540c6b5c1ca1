#include "declarative/animation.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace hushpane::declarative {

namespace {

// Points, shares and channels alike: a thousandth is less than anyone sees.
constexpr double atRest = 0.001;

struct Swing {
  double displacement = 0;
  double velocity = 0;
};

// The closed form of x'' + 2 d w x' + w^2 x = 0 from a displacement and a velocity, after `time` seconds.
Swing swingAt(double time, Swing start, double frequency, double damping) {
  const double x = start.displacement, v = start.velocity;
  if (damping < 1) {
    const double decay = damping * frequency;
    const double swing = frequency * std::sqrt(1 - damping * damping);
    const double b = (v + decay * x) / swing;
    const double envelope = std::exp(-decay * time), c = std::cos(swing * time), s = std::sin(swing * time);
    return {envelope * (x * c + b * s), envelope * ((b * swing - decay * x) * c - (x * swing + decay * b) * s)};
  }
  if (damping == 1) {
    const double b = v + frequency * x;
    const double envelope = std::exp(-frequency * time);
    return {envelope * (x + b * time), envelope * (b - frequency * (x + b * time))};
  }
  const double root = frequency * std::sqrt(damping * damping - 1);
  const double slow = -damping * frequency + root, fast = -damping * frequency - root;
  const double b = (v - slow * x) / (fast - slow), a = x - b;
  const double slowPart = a * std::exp(slow * time), fastPart = b * std::exp(fast * time);
  return {slowPart + fastPart, slow * slowPart + fast * fastPart};
}

}  // namespace

void Motion::set(Numbers value) {
  target_ = std::move(value);
  rest();
}

void Motion::animate(Numbers target, const Animation& animation, double now) {
  animate(current_, velocity_, std::move(target), animation, now);
}

void Motion::animate(Numbers from, Numbers velocity, Numbers target, const Animation& animation, double now) {
  current_ = start_ = std::move(from);
  velocity_ = startVelocity_ = std::move(velocity);
  startVelocity_.resize(start_.size());
  target_ = std::move(target);
  animation_ = animation;
  startTime_ = now;
  isMoving_ = true;
}

void Motion::advance(double now) {
  if (!isMoving_) return;
  const double elapsed = std::max(now - startTime_, 0.0);
  std::visit([&](const auto& course) { follow(course, elapsed); }, animation_.course);
}

void Motion::follow(const Curve& curve, double elapsed) {
  if (!animation_.repeatsForever && elapsed >= curve.duration) return rest();
  if (curve.duration <= 0) return rest();
  const double turns = elapsed / curve.duration;
  const bool isReturning = animation_.repeatsForever && std::fmod(turns, 2) >= 1;
  const auto covered = [&](double time) {
    const double fraction = std::clamp(time / curve.duration, 0.0, 1.0);
    return platform::evaluate(curve.timing, isReturning ? 1 - fraction : fraction);
  };
  const double time = (turns - std::floor(turns)) * curve.duration;
  constexpr double step = 1e-4;  // seconds
  const double part = covered(time), speed = (covered(time + step) - covered(time - step)) / (2 * step);
  velocity_.resize(start_.size());
  for (std::size_t index = 0; index < start_.size(); ++index) {
    current_[index] = platform::interpolate(start_[index], target_[index], part);
    velocity_[index] = (target_[index] - start_[index]) * speed;
  }
}

void Motion::follow(const Spring& spring, double elapsed) {
  if (spring.response <= 0) return rest();
  const double frequency = 2 * std::numbers::pi / spring.response;
  bool isResting = true;
  velocity_.resize(start_.size());
  for (std::size_t index = 0; index < start_.size(); ++index) {
    const Swing swing = swingAt(elapsed, {start_[index] - target_[index], startVelocity_[index]}, frequency,
                                std::max(spring.dampingFraction, 0.0));
    current_[index] = target_[index] + swing.displacement;
    velocity_[index] = swing.velocity;
    isResting = isResting && std::abs(swing.displacement) + std::abs(swing.velocity) / frequency < atRest;
  }
  if (isResting) rest();
}

void Motion::rest() {
  start_ = current_ = target_;
  velocity_.clear();
  isMoving_ = false;
}

}  // namespace hushpane::declarative

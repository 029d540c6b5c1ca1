#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

#include "platform/animation.h"
#include "platform/frame_clock.h"
#include "platform/main_queue.h"
#include "platform/token.h"

namespace hushpane::platform {

// Runs all animations of a desktop on its frame clock, which runs only while one is going on.
class Animator {
 public:
  Animator(MainQueue& queue, FrameClock& clock);
  ~Animator();

  // Calls `step` at each frame with the part of the way covered, at last with exactly 1, and then `completion`. The
  // first step comes with the next frame. Dropping the token ends the animation where it is: neither is called again.
  Token animate(Animation animation, std::function<void(double)> step, std::function<void()> completion);
  // Whether nothing is on its way.
  bool isIdle() const;

 private:
  struct Running;
  struct State;
  std::shared_ptr<State> state_;
};

// A value with two faces: the model, which a change sets at once, and the presentation, which is on screen and follows
// through an animation.
template <class Type>
class Animated {
 public:
  explicit Animated(Type value) : model_(value), presentation_(value) {}
  Animated(const Animated&) = delete;
  Animated& operator=(const Animated&) = delete;

  const Type& model() const { return model_; }
  const Type& presentation() const { return presentation_; }
  bool isRunning() const { return static_cast<bool>(running_); }

  // Sets both faces; an animation under way ends without its completion.
  void set(Type value) {
    running_.reset();
    model_ = presentation_ = value;
  }

  // Moves the presentation from where it is to `target`. An animation under way is replaced and its completion is not
  // called. `changed` follows each move.
  void animate(Animator& animator, Type target, Animation animation, std::function<void()> changed,
               std::function<void()> completion = {}) {
    model_ = target;
    running_ = animator.animate(
        animation,
        [this, start = presentation_, changed = std::move(changed)](double fraction) {
          presentation_ = fraction >= 1 ? model_ : interpolate(start, model_, fraction);
          changed();
        },
        [this, completion = std::move(completion)] {
          const auto ended = std::move(running_);
          if (completion) completion();
        });
  }

 private:
  Type model_;
  Type presentation_;
  Token running_;
};

}  // namespace hushpane::platform

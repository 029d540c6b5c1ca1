#include "platform/animator.h"

#include <utility>
#include <vector>

namespace hushpane::platform {

struct Animator::Running {
  double start;
  Animation animation;
  std::function<void(double)> step;
  std::function<void()> completion;
};

struct Animator::State : std::enable_shared_from_this<Animator::State> {
  State(MainQueue& mainQueue, FrameClock& frameClock) : queue(mainQueue), clock(frameClock) {}

  MainQueue& queue;
  FrameClock& clock;
  std::map<std::uint64_t, std::shared_ptr<Running>> running;
  std::uint64_t lastId = 0;
  Token frames;

  void frame() {
    const auto self = shared_from_this();  // a completion may end the animator
    const double now = queue.now();
    std::vector<std::uint64_t> round;
    for (const auto& entry : running) round.push_back(entry.first);
    for (const auto id : round) advance(id, now);
    stopWhenIdle();
  }

  void advance(std::uint64_t id, double now) {
    const auto found = running.find(id);
    if (found == running.end()) return;
    const auto current = found->second;
    const double elapsed = now - current->start;
    const bool ends = elapsed >= current->animation.duration;
    current->step(ends ? 1 : evaluate(current->animation.timing, elapsed / current->animation.duration));
    if (ends && running.erase(id) > 0) current->completion();
  }

  void stopWhenIdle() {
    if (running.empty()) frames.reset();
  }
};

Animator::Animator(MainQueue& queue, FrameClock& clock) : state_(std::make_shared<State>(queue, clock)) {}

Animator::~Animator() {
  state_->frames.reset();
  state_->running.clear();
}

Token Animator::animate(Animation animation, std::function<void(double)> step, std::function<void()> completion) {
  const auto id = ++state_->lastId;
  state_->running.emplace(
      id, std::make_shared<Running>(Running{state_->queue.now(), animation, std::move(step), std::move(completion)}));
  if (!state_->frames) {
    state_->frames = state_->clock.run([state = std::weak_ptr(state_)] {
      if (const auto held = state.lock()) held->frame();
    });
  }
  return Token([state = std::weak_ptr(state_), id] {
    const auto held = state.lock();
    if (held && held->running.erase(id) > 0) held->stopWhenIdle();
  });
}

bool Animator::isIdle() const {
  return state_->running.empty();
}

}  // namespace hushpane::platform

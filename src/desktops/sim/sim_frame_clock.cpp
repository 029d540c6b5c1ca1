#include "desktops/sim/sim_frame_clock.h"

#include <cmath>
#include <utility>

namespace hushpane::sim {

namespace {
constexpr double framesPerSecond = 60;
constexpr double tolerance = 1e-6;  // of a frame; far above rounding, far below anything seen
}  // namespace

platform::Token SimFrameClock::run(std::function<void()> onFrame) {
  auto token = handlers_.add(std::move(onFrame));
  if (!next_) scheduleNextFrame();
  return token;
}

void SimFrameClock::scheduleNextFrame() {
  const double now = queue_.now();
  const double frame = std::floor(now * framesPerSecond + tolerance) + 1;
  next_ = queue_.after(frame / framesPerSecond - now, [this] { this->frame(); });
}

void SimFrameClock::frame() {
  next_.reset();
  if (handlers_.empty()) return;
  ++frameCount_;
  scheduleNextFrame();
  handlers_.forEach([](const auto& handler) { handler(); });
}

}  // namespace hushpane::sim

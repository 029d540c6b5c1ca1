#include "desktops/x11/frame_clock.h"

#include <memory>
#include <utility>

namespace hushpane::x11 {

namespace {
constexpr double secondsPerFrame = 1.0 / 60;
}

platform::Token FrameClock::run(std::function<void()> onFrame) {
  auto handler = std::make_shared<platform::Token>(handlers_->add(std::move(onFrame)));
  if (!timer_) {
    timer_ = queue_.repeating(secondsPerFrame,
                              [handlers = handlers_] { handlers->forEach([](const auto& frame) { frame(); }); });
  }
  return platform::Token([this, handler, alive = std::weak_ptr(handlers_)] {
    handler->reset();
    const auto held = alive.lock();
    if (held && held->empty()) timer_.reset();
  });
}

}  // namespace hushpane::x11

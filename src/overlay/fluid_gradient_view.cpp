#include "overlay/fluid_gradient_view.h"

#include <algorithm>

namespace hushpane {

namespace {

constexpr double framesPerSecond = 30;
constexpr float tintAlpha = 0.65f;
// More pixels than these are stretched.
constexpr double widestDrawable = 1920;
constexpr double highestDrawable = 1200;

int pixels(double points, double scale, double most) {
  return std::max(1, static_cast<int>(std::min(points * scale, most)));
}

}  // namespace

FluidGradientView::FluidGradientView(platform::View& view, platform::Window& window, platform::Platform& platform)
    : view_(view),
      window_(window),
      platform_(platform),
      startTime_(platform.mainQueue().now()),
      visibility_(window.observeVisibility([this] { updateTimer(); })) {
  view_.setHidden(true);
}

void FluidGradientView::setPaused(bool paused) {
  isPaused_ = paused;
  updateTimer();
}

void FluidGradientView::updateTimer() {
  if (isPaused_ || !window_.isVisible() || !platform_.gpuDevice()) return timer_.reset();
  if (timer_) return;
  timer_ = platform_.mainQueue().repeating(1 / framesPerSecond, [this] { draw(); });
  draw();
}

void FluidGradientView::draw() {
  auto* device = platform_.gpuDevice();
  const auto& bounds = window_.frame();
  if (!device || view_.isHidden() || bounds.area() <= 0) return;
  if (!frame_) frame_ = std::make_shared<platform::Image>();
  const double scale = platform_.screens().scaleOf(bounds);
  const platform::FluidUniforms uniforms{static_cast<float>(platform_.mainQueue().now() - startTime_), accentHue_,
                                         tintAlpha};
  device->draw(uniforms, pixels(bounds.width, scale, widestDrawable), pixels(bounds.height, scale, highestDrawable),
               *frame_);
  view_.presentDrawable(frame_);
}

}  // namespace hushpane

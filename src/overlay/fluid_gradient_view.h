#pragma once

#include <memory>

#include "platform/platform.h"

namespace hushpane {

// A slowly moving two-colour gradient, drawn by the desktop's device over what lies beneath its view. Made paused. Once
// it runs it draws thirty frames a second while its window is ordered in, and none otherwise. Without a device it draws
// nothing.
class FluidGradientView {
 public:
  // The view is one of the window's; both outlive this object.
  FluidGradientView(platform::View& view, platform::Window& window, platform::Platform& platform);

  platform::View& view() { return view_; }

  // The base hue, in [0, 1); takes effect with the next frame.
  float accentHue() const { return accentHue_; }
  void setAccentHue(float hue) { accentHue_ = hue; }

  bool isPaused() const { return isPaused_; }
  // The clock of the gradient goes on meanwhile.
  void setPaused(bool paused);

 private:
  void updateTimer();
  void draw();

  platform::View& view_;
  platform::Window& window_;
  platform::Platform& platform_;
  const double startTime_;
  float accentHue_ = 0.6f;
  bool isPaused_ = true;
  std::shared_ptr<platform::Image> frame_;
  platform::Timer timer_;
  platform::Token visibility_;
};

}  // namespace hushpane

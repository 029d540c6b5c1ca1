#pragma once

#include "tests/x11/client_window.h"
#include "tests/x11/compositor.h"
#include "tests/x11/seat.h"
#include "tests/x11/window_manager.h"

namespace hushpane::x11_tests {

// One person's session: a monitor and room for a second one on its right, a window manager, and a compositor when asked
// for.
class Session : public Seat {
 public:
  static constexpr Rect leftMonitor{0, 0, 1120, 1080};
  static constexpr Rect rightMonitor{1120, 0, 800, 1080};
  static constexpr Pixel background{0x6080a0};

  enum class Monitors { left, both };
  explicit Session(const WindowManagerKind& windowManager = openbox(), Monitors monitors = Monitors::left);

  void plugInRightMonitor() const;
  void unplugRightMonitor() const;
  void startCompositor();
  void killCompositor(int signal);
  WindowManager& windowManager() { return *windowManager_; }
  void restartWindowManager();

 private:
  std::unique_ptr<WindowManager> windowManager_;
  std::unique_ptr<Compositor> compositor_;
};

}  // namespace hushpane::x11_tests

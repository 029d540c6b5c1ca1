#include "tests/x11/session.h"

#include "tests/x11/root_picture.h"

namespace hushpane::x11_tests {

Session::Session(const WindowManagerKind& windowManager, Monitors monitors)
    : Seat(XServer::virtualScreen("1920x1080x24")) {
  if (windowManager.countsOutputs) runTool({"xrandr", "--output", "screen", "--off", "--fb", "1920x1080"});
  runTool({"xrandr", "--setmonitor", "LEFT", "1120/300x1080/290+0+0", windowManager.countsOutputs ? "none" : "screen"});
  if (monitors == Monitors::both) plugInRightMonitor();
  windowManager_ = std::make_unique<WindowManager>(windowManager, environment(), logs(), x());
  runTool({"xsetroot", "-solid", "#6080a0"});
}

// A compositor draws the background itself and knows only backgrounds that are named. It is ready when it blends: in
// its first moments picom 9.1 paints black instead of what lies beneath a translucent window.
void Session::startCompositor() {
  setRootPicture(display(), 0, background, background);
  compositor_ = std::make_unique<Compositor>(environment(), logs(), x());
  constexpr Point corner{1919, 1079};
  const Pixel before = x().pixel(corner);
  constexpr std::uint8_t half = 128;
  {
    const ClientWindow speck(x(), {{corner.x, corner.y, 1, 1}, {0}, "_NET_WM_WINDOW_TYPE_TOOLTIP", true, half});
    waitUntil([&] { return isNear(x().pixel(corner), dimmed(before, 0.5)); });
  }
  waitUntil([&] { return x().pixel(corner) == before; });
}

void Session::killCompositor(int signal) {
  compositor_->signal(signal);
  waitUntil([this] { return !Compositor::isRunning(x()); });
  compositor_.reset();
}

void Session::restartWindowManager() {
  const WindowManagerKind kind = windowManager_->kind();
  windowManager_.reset();
  windowManager_ = std::make_unique<WindowManager>(kind, environment(), logs(), x());
}

void Session::plugInRightMonitor() const {
  runTool({"xrandr", "--setmonitor", "RIGHT", "800/210x1080/290+1120+0", "none"});
}

void Session::unplugRightMonitor() const {
  runTool({"xrandr", "--delmonitor", "RIGHT"});
}

}  // namespace hushpane::x11_tests

#include "tests/x11/session.h"

#include <xcb/xtest.h>

#include <algorithm>

#include "tests/x11/root_picture.h"

namespace hushpane::x11_tests {

Environment homeEnvironment(const std::filesystem::path& home) {
  Environment environment{{"HOME", home},
                          {"LANG", "C.UTF-8"},
                          {"XDG_CONFIG_HOME", home / "config"},
                          {"XDG_DATA_HOME", home / "data"},
                          {"XDG_CACHE_HOME", home / "cache"},
                          {"XDG_RUNTIME_DIR", home / "runtime"}};
  for (const char* folder : {"config", "data", "cache", "runtime", "logs"}) {
    std::filesystem::create_directory(home / folder);
  }
  std::filesystem::permissions(home / "runtime", std::filesystem::perms::owner_all);
  for (const char* name : {"PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
    if (const char* value = std::getenv(name)) environment[name] = value;
  }
  return environment;
}

Session::Session(const WindowManagerKind& windowManager, Monitors monitors)
    : logs_(home_.path() / "logs"), environment_(homeEnvironment(home_.path())) {
  server_ = std::make_unique<XServer>(environment_, logs_);
  environment_["DISPLAY"] = server_->display();
  x_ = std::make_unique<XConnection>(server_->display());
  if (windowManager.countsOutputs) runTool({"xrandr", "--output", "screen", "--off", "--fb", "1920x1080"});
  runTool({"xrandr", "--setmonitor", "LEFT", "1120/300x1080/290+0+0", windowManager.countsOutputs ? "none" : "screen"});
  if (monitors == Monitors::both) plugInRightMonitor();
  windowManager_ = std::make_unique<WindowManager>(windowManager, environment_, logs_, *x_);
  runTool({"xsetroot", "-solid", "#6080a0"});
}

void Session::startBus() {
  bus_ = std::make_unique<SessionBus>(environment_, logs_);
  environment_["DBUS_SESSION_BUS_ADDRESS"] = bus_->address();
}

// A compositor draws the background itself and knows only backgrounds that are named. It is ready when it blends: in
// its first moments picom 9.1 paints black instead of what lies beneath a translucent window.
void Session::startCompositor() {
  setRootPicture(display(), 0, background, background);
  compositor_ = std::make_unique<Compositor>(environment_, logs_, *x_);
  constexpr Point corner{1919, 1079};
  const Pixel before = x_->pixel(corner);
  constexpr std::uint8_t half = 128;
  {
    const ClientWindow speck(*x_, {{corner.x, corner.y, 1, 1}, {0}, "_NET_WM_WINDOW_TYPE_TOOLTIP", true, half});
    waitUntil([&] { return isNear(x_->pixel(corner), dimmed(before, 0.5)); });
  }
  waitUntil([&] { return x_->pixel(corner) == before; });
}

void Session::killCompositor(int signal) {
  compositor_->signal(signal);
  waitUntil([this] { return !Compositor::isRunning(*x_); });
  compositor_.reset();
}

void Session::restartWindowManager() {
  const WindowManagerKind kind = windowManager_->kind();
  windowManager_.reset();
  windowManager_ = std::make_unique<WindowManager>(kind, environment_, logs_, *x_);
}

bool Session::hasEwmh() const {
  return !x_->numbers(x_->root(), "_NET_SUPPORTING_WM_CHECK").empty();
}

// A window manager that has just begun may miss the first request.
void Session::activate(xcb_window_t window) const {
  for (auto end = Clock::now() + patience; Clock::now() < end;) {
    bringForward(window);
    if (waitUntil([&] { return x_->activeWindow() == window; }, 2s)) return;
  }
  throw std::runtime_error("a window stays in the back");
}

void Session::bringForward(xcb_window_t window) const {
  constexpr std::uint32_t fromTaskBar = 2;
  if (hasEwmh()) return request(window, "_NET_ACTIVE_WINDOW", {fromTaskBar, XCB_CURRENT_TIME});
  xcb_map_window(x_->get(), window);  // which ends its being minimised (ICCCM 4.1.4)
  waitUntil([&] { return x_->isOnScreen(window); }, 1s);
  const Rect bounds = x_->bounds(window);
  click({bounds.x + 20, bounds.bottom() - 20});
}

void Session::click(Point point) const {
  const auto input = [&](std::uint8_t type, std::uint8_t detail) {
    xcb_test_fake_input(x_->get(), type, detail, XCB_CURRENT_TIME, x_->root(), std::int16_t(point.x),
                        std::int16_t(point.y), 0);
  };
  input(XCB_MOTION_NOTIFY, 0);
  input(XCB_BUTTON_PRESS, 1);
  input(XCB_BUTTON_RELEASE, 1);
  x_->sync();
}

void Session::request(xcb_window_t window, const std::string& what, const std::vector<std::uint32_t>& values) const {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = x_->atom(what);
  std::copy(values.begin(), values.end(), message.data.data32);
  xcb_send_event(x_->get(), 0, x_->root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&message));
  x_->sync();
}

void Session::keyboard(const std::string& action, const std::string& keys) const {
  runTool({"xdotool", action, keys});
}

void Session::plugInRightMonitor() const {
  runTool({"xrandr", "--setmonitor", "RIGHT", "800/210x1080/290+1120+0", "none"});
}

void Session::unplugRightMonitor() const {
  runTool({"xrandr", "--delmonitor", "RIGHT"});
}

SettingsFile Session::settings() const {
  return SettingsFile(home_.path() / "config/hushpane/com.corvane.Hushpane.plist");
}

SettingsFile Session::sharedFile() const {
  return SettingsFile(home_.path() / "data/group.com.corvane.Hushpane/hushpane-shared.plist");
}

}  // namespace hushpane::x11_tests

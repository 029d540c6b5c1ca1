#include "tests/x11/seat.h"

#include <xcb/xtest.h>

#include <algorithm>

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

Seat::Seat(std::vector<std::string> serverCommand)
    : logs_(home_.path() / "logs"), environment_(homeEnvironment(home_.path())) {
  server_ = std::make_unique<XServer>(environment_, logs_, std::move(serverCommand));
  environment_["DISPLAY"] = server_->display();
  x_ = std::make_unique<XConnection>(server_->display());
}

void Seat::startBus(SessionBus::Services services) {
  bus_ = std::make_unique<SessionBus>(environment_, logs_, services);
  environment_["DBUS_SESSION_BUS_ADDRESS"] = bus_->address();
}

bool Seat::hasEwmh() const {
  return !x_->numbers(x_->root(), "_NET_SUPPORTING_WM_CHECK").empty();
}

// A window manager that has just begun may miss the first request.
void Seat::activate(xcb_window_t window) const {
  for (auto end = Clock::now() + patience; Clock::now() < end;) {
    bringForward(window);
    if (waitUntil([&] { return x_->activeWindow() == window; }, 2s)) return;
  }
  throw std::runtime_error("a window stays in the back");
}

void Seat::bringForward(xcb_window_t window) const {
  constexpr std::uint32_t fromTaskBar = 2;
  if (hasEwmh()) return request(window, "_NET_ACTIVE_WINDOW", {fromTaskBar, XCB_CURRENT_TIME});
  xcb_map_window(x_->get(), window);  // which ends its being minimised (ICCCM 4.1.4)
  waitUntil([&] { return x_->isOnScreen(window); }, 1s);
  const Rect bounds = x_->bounds(window);
  click({bounds.x + 20, bounds.bottom() - 20});
}

void Seat::click(Point point) const {
  const auto input = [&](std::uint8_t type, std::uint8_t detail) {
    xcb_test_fake_input(x_->get(), type, detail, XCB_CURRENT_TIME, x_->root(), std::int16_t(point.x),
                        std::int16_t(point.y), 0);
  };
  input(XCB_MOTION_NOTIFY, 0);
  input(XCB_BUTTON_PRESS, 1);
  input(XCB_BUTTON_RELEASE, 1);
  x_->sync();
}

void Seat::request(xcb_window_t window, const std::string& what, const std::vector<std::uint32_t>& values) const {
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

void Seat::keyboard(const std::string& action, const std::string& keys) const {
  runTool({"xdotool", action, keys});
}

void Seat::minimise(xcb_window_t window) const {
  constexpr std::uint32_t iconicState = 3;  // ICCCM 4.1.4
  request(window, "WM_CHANGE_STATE", {iconicState});
}

void Seat::setState(xcb_window_t window, bool isOn, const std::string& first, const std::string& second) const {
  const auto state = [&](const std::string& name) {
    return name.empty() ? xcb_atom_t{XCB_ATOM_NONE} : x().atom("_NET_WM_STATE_" + name);
  };
  constexpr std::uint32_t fromApplication = 1;
  request(window, "_NET_WM_STATE", {isOn, state(first), state(second), fromApplication});
}

SettingsFile Seat::settings() const {
  return SettingsFile(home_.path() / "config/hushpane/com.corvane.Hushpane.plist");
}

SettingsFile Seat::sharedFile() const {
  return SettingsFile(home_.path() / "data/group.com.corvane.Hushpane/hushpane-shared.plist");
}

}  // namespace hushpane::x11_tests

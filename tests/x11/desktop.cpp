#include "tests/x11/desktop.h"

#include "tests/x11/screenshot.h"

namespace hushpane::x11_tests {
namespace {

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

}  // namespace

Desktop::Desktop() : logs_(home_.path() / "logs"), environment_(homeEnvironment(home_.path())) {
  server_ = std::make_unique<XServer>(environment_, logs_);
  environment_["DISPLAY"] = server_->display();
  x_ = std::make_unique<XConnection>(server_->display());
  windowManager_ = std::make_unique<WindowManager>(environment_, logs_, *x_);
  runTool({"xrandr", "--setmonitor", "LEFT", "1120/300x1080/290+0+0", "screen"});
  setRightMonitor(true);
  runTool({"xsetroot", "-solid", "#6080a0"});
  const auto open = [&](const Terminal::Look& look) {
    return std::make_unique<Terminal>(look, environment_, logs_, *x_);
  };
  red_ = open({"red", {0xc03030}, {100, 100}});
  green_ = open({"green", {0x30a050}, {300, 250}});
  blue_ = open({"blue", {0x3050c0}, {1300, 300}});
  for (Terminal* terminal : {red_.get(), green_.get(), blue_.get()}) terminal->waitForWindow();
  activate(red_->window());
}

void Desktop::startBus() {
  bus_ = std::make_unique<SessionBus>(environment_, logs_);
  environment_["DBUS_SESSION_BUS_ADDRESS"] = bus_->address();
}

void Desktop::startCompositor() {
  compositor_ = std::make_unique<Compositor>(environment_, logs_, *x_);
}

void Desktop::stopCompositor() {
  compositor_.reset();
}

std::unique_ptr<ClientWindow> Desktop::openWindow(ClientWindow::Look look) {
  return std::make_unique<ClientWindow>(display(), look);
}

void Desktop::activate(xcb_window_t window) {
  runTool({"xdotool", "windowactivate", std::to_string(window)});
  if (!waitUntil([&] { return x_->activeWindow() == window; })) throw std::runtime_error("a window stays in the back");
}

void Desktop::click(Point point) {
  runTool({"xdotool", "mousemove", std::to_string(int(point.x)), std::to_string(int(point.y)), "click", "1"});
}

void Desktop::setRightMonitor(bool connected) {
  if (connected) {
    runTool({"xrandr", "--setmonitor", "RIGHT", "800/210x1080/290+1120+0", "none"});
  } else {
    runTool({"xrandr", "--delmonitor", "RIGHT"});
  }
}

SettingsFile Desktop::settings() const {
  return SettingsFile(home_.path() / "config/hushpane/com.corvane.Hushpane.plist");
}

SettingsFile Desktop::sharedFile() const {
  return SettingsFile(home_.path() / "data/group.com.corvane.Hushpane/hushpane-shared.plist");
}

void Desktop::chooseMode(const std::string& mode, const std::string& surface, SettingsValues more) {
  more.insert({{"hasSeenWelcome", xml(true)},
               {"hushpane.lastUserMode", xml(mode.c_str())},
               {"hushpane.ambientSurface", xml(surface.c_str())},
               {"hushpane.focusSurface", xml(surface.c_str())}});
  settings().write(more);
}

void Desktop::startHushpane(const std::vector<std::string>& arguments) {
  untouched_ = x_->capture();
  std::filesystem::remove(sharedFile().path());
  std::vector<std::string> command{HUSHPANE_BINARY};
  command.insert(command.end(), arguments.begin(), arguments.end());
  hushpane_ = std::make_unique<Process>(command, environment_, logs_);
  if (!waitUntil([this] { return sharedFile().value("hushpane.userMode").has_value(); })) {
    throw std::runtime_error("hushpane did not start: " + hushpane_->errors());
  }
}

std::optional<int> Desktop::startAnother(const std::vector<std::string>& arguments) {
  std::vector<std::string> command{HUSHPANE_BINARY};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return Process(command, environment_, logs_).wait();
}

testing::AssertionResult Desktop::shows(Point point, Pixel pixel, milliseconds limit) const {
  Pixel seen;
  if (waitUntil([&] { return isNear(seen = x_->pixel(point), pixel); }, limit)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << seen << " instead of " << pixel << " at " << point.x << "," << point.y;
}

testing::AssertionResult Desktop::keeps(Point point, Pixel pixel, milliseconds time) const {
  Pixel seen;
  if (holdsFor(time, [&] { return isNear(seen = x_->pixel(point), pixel); })) return testing::AssertionSuccess();
  return testing::AssertionFailure() << seen << " instead of " << pixel << " at " << point.x << "," << point.y;
}

testing::AssertionResult Desktop::looksUntouched() const {
  if (waitUntil([this] { return x_->capture() == untouched_; })) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "the screen differs from what it was before the program started";
}

void Desktop::shot(const std::string& name) const {
  saveForPeople(x_->capture(), name);
}

}  // namespace hushpane::x11_tests

#include "tests/x11/desktop.h"

#include <algorithm>

#include "tests/x11/root_picture.h"
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
  plugInRightMonitor();
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

// A compositor draws the background itself and knows only backgrounds that are named. It has begun when something new
// reaches the screen through it.
void Desktop::startCompositor() {
  setRootPicture(display(), 0, background, background);
  compositor_ = std::make_unique<Compositor>(environment_, logs_, *x_);
  constexpr Point corner{1919, 1079};
  const Pixel before = x_->pixel(corner);
  const auto speck = openWindow({{corner.x, corner.y, 1, 1}, {0xffffff}, "_NET_WM_WINDOW_TYPE_TOOLTIP", true});
  waitUntil([&] { return x_->pixel(corner) == speck->color(); });
  speck->setBounds({corner.x, corner.y + 1, 1, 1});
  waitUntil([&] { return x_->pixel(corner) == before; });
}

void Desktop::killCompositor(int signal) {
  compositor_->signal(signal);
  waitUntil([this] { return !Compositor::isRunning(*x_); });
  compositor_.reset();
}

void Desktop::restartWindowManager() {
  windowManager_.reset();
  windowManager_ = std::make_unique<WindowManager>(environment_, logs_, *x_);
}

std::unique_ptr<ClientWindow> Desktop::openWindow(ClientWindow::Look look) {
  return std::make_unique<ClientWindow>(display(), look);
}

void Desktop::activate(xcb_window_t window) {
  runTool({"xdotool", "windowactivate", std::to_string(window)});
  if (!waitUntil([&] { return x_->activeWindow() == window; })) throw std::runtime_error("a window stays in the back");
}

void Desktop::moveTo(Point point) {
  runTool({"xdotool", "mousemove", std::to_string(int(point.x)), std::to_string(int(point.y))});
}

void Desktop::click(Point point) {
  moveTo(point);
  runTool({"xdotool", "click", "1"});
}

void Desktop::keyboard(const std::string& action, const std::string& keys) {
  runTool({"xdotool", action, keys});
}

void Desktop::plugInRightMonitor() {
  runTool({"xrandr", "--setmonitor", "RIGHT", "800/210x1080/290+1120+0", "none"});
}

void Desktop::unplugRightMonitor() {
  runTool({"xrandr", "--delmonitor", "RIGHT"});
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

std::unique_ptr<Process> Desktop::spawn(std::vector<std::string> launcher,
                                        const std::vector<std::string>& arguments) const {
  launcher.push_back(HUSHPANE_BINARY);
  launcher.insert(launcher.end(), arguments.begin(), arguments.end());
  return std::make_unique<Process>(launcher, environment_, logs_);
}

// The program has begun when it has published its mode.
void Desktop::startHushpane(const std::vector<std::string>& arguments, const std::vector<std::string>& launcher) {
  const auto lastPublished = [file = sharedFile().path()] {
    std::error_code missing;
    return std::filesystem::last_write_time(file, missing);
  };
  const auto before = lastPublished();
  untouched_ = x_->capture();
  hushpane_ = spawn(launcher, arguments);
  waitUntil([&] { return lastPublished() != before || !hushpane_->isRunning(); });
  if (lastPublished() == before) {
    throw std::runtime_error("hushpane did not start: " + hushpane_->errors());
  }
}

std::unique_ptr<Process> Desktop::runHushpane(const std::vector<std::string>& arguments) {
  auto process = spawn({}, arguments);
  process->wait();
  return process;
}

testing::AssertionResult Desktop::entersMode(const std::string& mode) const {
  std::optional<std::string> seen;
  if (waitUntil([&] { return (seen = sharedFile().value("hushpane.userMode")) == mode; })) {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << "the mode is " << seen.value_or("absent") << " instead of " << mode;
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

testing::AssertionResult Desktop::showsDimExcept(const std::vector<Rect>& clear, double alpha) const {
  Picture seen;
  const auto expected = [&](int column, int row) {
    const Point point{double(column), double(row)};
    const bool isClear =
        std::any_of(clear.begin(), clear.end(), [&](const Rect& area) { return area.contains(point); });
    return isClear ? untouched_.at(column, row) : dimmed(untouched_.at(column, row), alpha);
  };
  std::optional<std::pair<int, int>> wrong;
  const auto findWrong = [&] {
    for (int row = 0; row < seen.height; ++row) {
      for (int column = 0; column < seen.width; ++column) {
        if (!isNear(seen.at(column, row), expected(column, row))) return wrong = {column, row}, true;
      }
    }
    return wrong.reset(), false;
  };
  if (waitUntil([&] { return seen = x_->capture(), !findWrong(); })) return testing::AssertionSuccess();
  return testing::AssertionFailure() << seen.at(wrong->first, wrong->second) << " instead of "
                                     << expected(wrong->first, wrong->second) << " at " << wrong->first << ','
                                     << wrong->second;
}

testing::AssertionResult Desktop::looksUntouched() const {
  return showsDimExcept({}, 0);
}

void Desktop::shot(const std::string& name) const {
  saveForPeople(x_->capture(), name);
}

}  // namespace hushpane::x11_tests

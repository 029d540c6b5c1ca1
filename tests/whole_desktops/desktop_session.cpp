#include "tests/whole_desktops/desktop_session.h"

#include <algorithm>
#include <stdexcept>

#include "tests/x11/screenshot.h"

namespace hushpane::x11_tests {

namespace {

// Of a monitor's mode, with 1020 pixels in 1010 rows.
constexpr const char *clock = "60.0", *rate = "58.241";

// What some desktops would arrange anew, unless they believe that the user did it.
std::string monitorsFile() {
  const auto monitor = [](const std::string& output, const std::string& width, const std::string& more) {
    return "<logicalmonitor><y>0</y><scale>1</scale>" + more + "<monitor><monitorspec><connector>" + output +
           "</connector><vendor>unknown</vendor><product>unknown</product><serial>unknown</serial></monitorspec>"
           "<mode><width>" +
           width + "</width><height>1000</height><rate>" + rate + "</rate></mode></monitor></logicalmonitor>";
  };
  return "<monitors version='2'><configuration>" + monitor("DUMMY0", "900", "<x>0</x><primary>yes</primary>") +
         monitor("DUMMY1", "700", "<x>900</x>") + "</configuration></monitors>";
}

std::vector<std::string> serverFor(const DesktopWay& way) {
  if (way.monitors == 1) return XServer::virtualScreen("1600x1000x24");
  return {"Xorg",     "-config",       HUSHPANE_SOURCE_DIR "/tests/whole_desktops/two_monitors.conf",
          "-logfile", "/tmp/Xorg.log", "-novtswitch",
          "-sharevts"};
}

}  // namespace

std::vector<DesktopWay> desktopWays() {
  std::vector<DesktopWay> ways;
  for (const DesktopKind& kind : desktopKinds()) {
    ways.push_back({kind.name, &kind, 1});
    ways.push_back({kind.name + "-two", &kind, 2});
  }
  return ways;
}

DesktopSession& DesktopSession::running(const DesktopWay& way) {
  static std::unique_ptr<DesktopSession> session;
  static std::string tried;
  if (std::exchange(tried, way.name) != way.name) {
    session.reset();
    session = std::make_unique<DesktopSession>(way);
  }
  if (!session) throw std::runtime_error(way.name + " did not start before");
  return *session;
}

DesktopSession::DesktopSession(const DesktopWay& way) : Seat(serverFor(way)), way_(way) {
  writeFiles();
  for (const auto& [name, value] : kind().environment) environment()[name] = value;
  environment().insert({{"LIBGL_ALWAYS_SOFTWARE", "1"},
                        {"XDG_SESSION_TYPE", "x11"},
                        {"GDK_BACKEND", "x11"},
                        {"GSETTINGS_BACKEND", "keyfile"},
                        {"SHELL", "/bin/sh"},
                        {"USER", "person"},
                        {"LOGNAME", "person"}});
  if (monitors() == 2) {
    addMonitor("DUMMY0", "900", "0");
    addMonitor("DUMMY1", "700", "900");
    runTool({"xrandr", "--output", "DUMMY0", "--primary"});
  }
  startBus(SessionBus::Services::installed);
  start();
}

void DesktopSession::addMonitor(const std::string& output, const std::string& width, const std::string& left) const {
  const std::string mode = width + "x1000";
  runTool({"xrandr", "--newmode", mode, clock, width, "1000", "1010", "1020", "1000", "1001", "1004", "1010"});
  runTool({"xrandr", "--addmode", output, mode});
  runTool({"xrandr", "--fb", "1600x1000", "--output", output, "--mode", mode, "--pos", left + "x0"});
}

void DesktopSession::writeFiles() const {
  const std::filesystem::path settings = environment().at("XDG_CONFIG_HOME");
  auto files = commonFiles();
  for (const auto& [name, text] : kind().files) files[name] = text;
  if (monitors() == 2) files["monitors.xml"] = files["cinnamon-monitors.xml"] = monitorsFile();
  for (const auto& [name, text] : files) {
    std::filesystem::create_directories((settings / name).parent_path());
    std::ofstream(settings / name) << text;
  }
  std::filesystem::create_directories(home() / "Desktop");
  for (const char* name : {"one", "two", "three"}) std::filesystem::create_directories(home() / "files" / name);
  std::filesystem::create_directory_symlink(settings, home() / ".config");  // some look nowhere else
  const std::filesystem::path services = home() / "data/dbus-1/services";
  std::filesystem::create_directories(services);
  for (const auto& [name, program] : kind().services)
    std::ofstream(services / (name + ".service")) << "[D-BUS Service]\nName=" << name << "\nExec=" << program << '\n';
}

void DesktopSession::start() {
  Process& session = open(kind().command);
  if (!waitUntil([&] { return hasEwmh() || !session.isRunning(); }, 60s) || !session.isRunning())
    throw std::runtime_error(kind().name + " did not start: " + session.errors());
  for (const auto& helper : kind().helpers) open(helper);
  const auto end = Clock::now() + 90s;
  const auto isThere = [&] { return showsPicture(upperColor, lowerColor) && !bars().empty(); };
  while (choosePicture(upperColor, lowerColor), !waitUntil(isThere, 1500ms))
    if (Clock::now() > end) {
      saveForPeople(x().capture(), way_.name + "/start (failed)");
      throw std::runtime_error(kind().name + " shows no desktop: " + session.errors());
    }
}

std::vector<Rect> DesktopSession::bars() const {
  const auto area = x().numbers(x().root(), "_NET_WORKAREA");
  if (area.size() < 4) return {};
  const double top = area[1], bottom = area[1] + area[3], width = monitors() == 2 ? leftWidth : screen.width;
  std::vector<Rect> found;
  if (top > 0) found.push_back({0, 0, width, top});
  if (bottom < screen.height) found.push_back({0, bottom, width, screen.height - bottom});
  return found;
}

std::vector<Rect> DesktopSession::furniture() const {
  std::vector<Rect> found = bars();
  const xcb_atom_t dock = x().atom("_NET_WM_WINDOW_TYPE_DOCK");
  for (const xcb_window_t window : x().managedWindows()) {
    const auto types = x().numbers(window, "_NET_WM_WINDOW_TYPE");
    if (!types.empty() && types.front() == dock) found.push_back(x().bounds(window));
  }
  return found;
}

void DesktopSession::clickSlowly(Point point) const {
  runTool({"xdotool", "mousemove", std::to_string(int(point.x)), std::to_string(int(point.y))});
  runTool({"xdotool", "mousedown", "1"});
  runTool({"xdotool", "mouseup", "1"});
}

// A file of its own each time: desktops look at a new name only.
void DesktopSession::choosePicture(Pixel upper, Pixel lower) {
  Picture picture{1600, 1000, std::vector<std::uint32_t>(1600 * 1000)};
  for (std::size_t index = 0; index < picture.pixels.size(); ++index)
    picture.pixels[index] = (index / 1600 < edge ? upper : lower).value;
  const std::filesystem::path file = home() / ("picture" + std::to_string(++pictures_) + ".png");
  savePng(picture, file);
  shell(kind().choosePicture, file.string());
}

bool DesktopSession::showsPicture(Pixel upper, Pixel lower) const {
  return std::all_of(std::begin(bareSpots), std::end(bareSpots),
                     [&](Point spot) { return isNear(x().pixel(spot), spot.y < edge ? upper : lower); });
}

void DesktopSession::toWorkspace(std::uint32_t number) {
  request(x().root(), "_NET_CURRENT_DESKTOP", {number, XCB_CURRENT_TIME});
  const auto isThere = [&] { return x().numbers(x().root(), "_NET_CURRENT_DESKTOP") == std::vector{number}; };
  if (!waitUntil(isThere)) throw std::runtime_error("the workspace stays");
}

Process& DesktopSession::open(const std::vector<std::string>& command) {
  processes_.push_back(std::make_unique<Process>(command, environment(), logs()));
  return *processes_.back();
}

void DesktopSession::shell(const std::string& line, const std::string& argument) const {
  Process({"sh", "-c", line, "sh", argument}, environment(), logs()).wait();
}

}  // namespace hushpane::x11_tests

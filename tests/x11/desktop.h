#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "tests/x11/client_window.h"
#include "tests/x11/compositor.h"
#include "tests/x11/screen_watch.h"
#include "tests/x11/session_bus.h"
#include "tests/x11/settings_file.h"
#include "tests/x11/temporary_folder.h"
#include "tests/x11/terminal.h"
#include "tests/x11/window_manager.h"
#include "tests/x11/x_server.h"

namespace hushpane::x11_tests {

// One person's desktop for one test: an X server with two monitors side by side, a window manager, three terminals (red
// and green overlap on the left monitor, blue is on the right one, red is active) and a home of its own. The program
// under test starts when the test says so.
class Desktop : public testing::Test {
 protected:
  static constexpr Rect leftMonitor{0, 0, 1120, 1080};
  static constexpr Rect rightMonitor{1120, 0, 800, 1080};
  static constexpr Pixel background{0x6080a0};
  // Spots where nothing but the background is.
  static constexpr Point leftSpot{600, 900};
  static constexpr Point rightSpot{1800, 900};
  // How dark the dim is at its strengths.
  static constexpr double subtle = 0.3, balanced = 0.5, strong = 0.7;

  Desktop();

  // --- the desktop ---
  // What programs of this desktop get to know of it.
  Environment& environment() { return environment_; }
  void startBus();
  void startCompositor();
  void killCompositor(int signal);
  void restartWindowManager();
  const std::filesystem::path& logs() const { return logs_; }
  std::string runTool(const std::vector<std::string>& command) { return run(command, environment_, logs_); }
  // A window of the test's own application.
  std::unique_ptr<ClientWindow> openWindow(ClientWindow::Look look);
  // Brings a window to the front as a task bar does, and waits for it.
  void activate(xcb_window_t window);
  void moveTo(Point point);
  void click(Point point);
  // One step of a keyboard tool: "keydown alt", "key a", "type text".
  void keyboard(const std::string& action, const std::string& keys);
  void plugInRightMonitor();
  void unplugRightMonitor();

  // --- the program ---
  SettingsFile settings() const;
  SettingsFile sharedFile() const;
  // The settings of somebody who uses that mode with that surface, and more.
  void chooseMode(const std::string& mode, const std::string& surface = "dim", SettingsValues more = {});
  // Starts the program and waits until it has begun its work. A launcher is a command that becomes the program.
  void startHushpane(const std::vector<std::string>& arguments = {}, const std::vector<std::string>& launcher = {});
  // Starts it beside the first, or where it cannot run, and waits until it is over.
  std::unique_ptr<Process> runHushpane(const std::vector<std::string>& arguments);
  // Asks it to end.
  std::optional<int> stopHushpane() { return hushpane_->terminate(); }
  Process& hushpane() { return *hushpane_; }
  testing::AssertionResult entersMode(const std::string& mode) const;

  // --- what people see ---
  // Whether the spot comes to show the pixel, and what it shows where it does not.
  testing::AssertionResult shows(Point point, Pixel pixel, milliseconds limit = patience) const;
  // Whether the spot shows the pixel from now on for a while.
  testing::AssertionResult keeps(Point point, Pixel pixel, milliseconds time) const;
  // Whether the whole screen comes to look as it did before the start, beneath black of that alpha but for some areas.
  testing::AssertionResult showsDimExcept(const std::vector<Rect>& clear, double alpha = balanced) const;
  // Whether the whole screen comes to look as if the program did not run.
  testing::AssertionResult looksUntouched() const;
  // Saves a picture for people who ask for it.
  void shot(const std::string& name) const;

  const XConnection& x() const { return *x_; }
  const std::string& display() const { return server_->display(); }

 private:
  TemporaryFolder home_;
  const std::filesystem::path logs_;
  Environment environment_;

  std::unique_ptr<Process> spawn(std::vector<std::string> launcher, const std::vector<std::string>& arguments) const;

 protected:
  std::unique_ptr<XServer> server_;

 private:
  std::unique_ptr<XConnection> x_;
  std::unique_ptr<WindowManager> windowManager_;
  std::unique_ptr<Compositor> compositor_;

 protected:
  std::unique_ptr<SessionBus> bus_;
  std::unique_ptr<Terminal> red_, green_, blue_;

 private:
  std::unique_ptr<Process> hushpane_;
  Picture untouched_;
};

}  // namespace hushpane::x11_tests

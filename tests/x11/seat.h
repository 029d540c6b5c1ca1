#pragma once

#include <memory>

#include "support/temporary_folder.h"
#include "tests/x11/session_bus.h"
#include "tests/x11/settings_file.h"
#include "tests/x11/x_connection.h"
#include "tests/x11/x_server.h"

namespace hushpane::x11_tests {

// What programs get to know whose home that folder is; makes the folders in it.
Environment homeEnvironment(const std::filesystem::path& home);

// Where one person sits: an X server and a home of their own, a session bus when asked for, a mouse and a keyboard.
class Seat {
 public:
  explicit Seat(std::vector<std::string> serverCommand);

  // What programs at this seat get to know of it.
  Environment& environment() { return environment_; }
  const Environment& environment() const { return environment_; }
  std::filesystem::path home() const { return home_.path(); }
  // Where their output goes.
  const std::filesystem::path& logs() const { return logs_; }
  const XConnection& x() const { return *x_; }
  const std::string& display() const { return server_->display(); }
  // The program's settings, and what it shares with the desktop widget.
  SettingsFile settings() const;
  SettingsFile sharedFile() const;

  std::string runTool(const std::vector<std::string>& command) const { return run(command, environment_, logs_); }
  // Whether the window manager speaks EWMH.
  bool hasEwmh() const;
  // Brings a window to the front as a task bar does, or by a click where there can be none, and waits for it.
  void activate(xcb_window_t window) const;
  void click(Point point) const;
  // Asks the window manager for what concerns a window, or the root (EWMH).
  void request(xcb_window_t window, const std::string& what, const std::vector<std::uint32_t>& values) const;
  void minimise(xcb_window_t window) const;
  void setState(xcb_window_t window, bool isOn, const std::string& first, const std::string& second = {}) const;
  void showDesktop(bool isOn) const { request(x().root(), "_NET_SHOWING_DESKTOP", {isOn}); }
  // One step of a keyboard tool: "keydown alt", "key a", "type text".
  void keyboard(const std::string& action, const std::string& keys) const;

  void startBus(SessionBus::Services services = SessionBus::Services::none);
  void endBus() { bus_->terminate(); }
  void endServer() { server_->terminate(); }

 private:
  void bringForward(xcb_window_t window) const;

  TemporaryFolder home_;
  const std::filesystem::path logs_;
  Environment environment_;
  std::unique_ptr<XServer> server_;
  std::unique_ptr<XConnection> x_;
  std::unique_ptr<SessionBus> bus_;
};

}  // namespace hushpane::x11_tests

#pragma once

#include <memory>

#include "support/temporary_folder.h"
#include "tests/x11/client_window.h"
#include "tests/x11/compositor.h"
#include "tests/x11/session_bus.h"
#include "tests/x11/settings_file.h"
#include "tests/x11/window_manager.h"
#include "tests/x11/x_server.h"

namespace hushpane::x11_tests {

// What programs get to know whose home that folder is; makes the folders in it.
Environment homeEnvironment(const std::filesystem::path& home);

// One person's session: an X server with a monitor and room for a second one on its right, a window manager, and a home
// of its own; a session bus and a compositor when asked for.
class Session {
 public:
  static constexpr Rect leftMonitor{0, 0, 1120, 1080};
  static constexpr Rect rightMonitor{1120, 0, 800, 1080};
  static constexpr Pixel background{0x6080a0};

  enum class Monitors { left, both };
  explicit Session(const WindowManagerKind& windowManager = openbox(), Monitors monitors = Monitors::left);

  // What programs of this session get to know of it.
  Environment& environment() { return environment_; }
  const Environment& environment() const { return environment_; }
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
  // One step of a keyboard tool: "keydown alt", "key a", "type text".
  void keyboard(const std::string& action, const std::string& keys) const;
  void plugInRightMonitor() const;
  void unplugRightMonitor() const;

  void startBus();
  void endBus() { bus_->terminate(); }
  void startCompositor();
  void killCompositor(int signal);
  WindowManager& windowManager() { return *windowManager_; }
  void restartWindowManager();
  void endServer() { server_->terminate(); }

 private:
  void bringForward(xcb_window_t window) const;

  TemporaryFolder home_;
  const std::filesystem::path logs_;
  Environment environment_;
  std::unique_ptr<XServer> server_;
  std::unique_ptr<XConnection> x_;
  std::unique_ptr<WindowManager> windowManager_;
  std::unique_ptr<Compositor> compositor_;
  std::unique_ptr<SessionBus> bus_;
};

}  // namespace hushpane::x11_tests

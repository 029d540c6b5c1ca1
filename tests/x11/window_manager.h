#pragma once

#include "tests/x11/process.h"
#include "tests/x11/session_bus.h"
#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {

// How to run a window manager with two workspaces, so that a click raises and focuses and nothing else is drawn. In
// words and files "%" stands for the folder of its configuration files.
struct WindowManagerKind {
  std::string name;
  std::vector<std::string> command;
  // What the command takes on to replace a running one; without it the old one ends first.
  std::vector<std::string> replacing = {};
  std::map<std::filesystem::path, std::string> files = {};
  Environment environment = {};
  bool needsBus = false;
  // Knows only monitors with an output, of which the X server has one, and takes the whole screen where there is none.
  bool countsOutputs = false;
  // Commands that change what EWMH has no working request for: a program and words before the workspace's name, and
  // its own compositor.
  std::vector<std::string> toWorkspace = {};
  std::vector<std::string> compositorOn = {}, compositorOff = {};
};

WindowManagerKind openbox();

// A running window manager.
class WindowManager {
 public:
  WindowManager(const WindowManagerKind& kind, const Environment& environment, const std::filesystem::path& folder,
                const XConnection& x);

  const WindowManagerKind& kind() const { return kind_; }
  Process& process() { return *process_; }
  // A second process of the same kind takes over.
  void replace();
  void run(const std::vector<std::string>& command) const;

 private:
  std::vector<std::string> filled(std::vector<std::string> words) const;
  void writeFiles() const;
  void waitUntilReady();

  WindowManagerKind kind_;
  Environment environment_;
  std::filesystem::path folder_;
  std::filesystem::path configuration_;
  const XConnection& x_;
  std::unique_ptr<SessionBus> bus_;
  std::unique_ptr<Process> process_;
};

}  // namespace hushpane::x11_tests

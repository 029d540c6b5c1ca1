#pragma once

#include "tests/whole_desktops/desktop_session.h"

namespace hushpane::x11_tests {

// A real program with a window in a desktop.
class Application {
 public:
  // Starts it, waits for its window and puts it there.
  Application(DesktopSession& session, const std::vector<std::string>& command, const Rect& place);

  const std::string& name() const { return name_; }
  xcb_window_t window() const { return window_; }
  Process& process() const { return process_; }
  // What people take for the window: without the shadow that it draws around itself.
  Rect bounds() const;
  // A part of its contents that looks the same whether it is active or not.
  Rect inside() const;
  // Where a click brings it to the front and does nothing else.
  Point title() const;
  void place(const Rect& bounds) const;

 private:
  DesktopSession& session_;
  std::string name_;
  xcb_window_t window_ = XCB_NONE;
  Process& process_;
};

// The windows that somebody has open.
struct Applications {
  static Applications& running(DesktopSession& session);

  Application gtkEditor, qtEditor, terminal, files;
  std::vector<const Application*> all() const { return {&gtkEditor, &qtEditor, &terminal, &files}; }
};

}  // namespace hushpane::x11_tests

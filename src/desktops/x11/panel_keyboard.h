#pragma once

#include <vector>

#include "desktops/x11/connection.h"
#include "platform/keyboard.h"
#include "platform/main_queue.h"
#include "platform/token.h"

namespace hushpane::x11 {

// Gives windows the keys as a menu has them: by a grab, so that the input focus, and with it the window in front, stays
// where it is. The window added last has them. While another program holds the keyboard, it is asked for again, for a
// moment.
class PanelKeyboard {
 public:
  PanelKeyboard(Connection& connection, platform::MainQueue& queue) : connection_(connection), queue_(queue) {}
  PanelKeyboard(const PanelKeyboard&) = delete;
  PanelKeyboard& operator=(const PanelKeyboard&) = delete;

  void add(xcb_window_t window);
  void remove(xcb_window_t window);

  // What the key is to a panel.
  platform::KeyPress read(const xcb_key_press_event_t& event);

 private:
  void grab();
  void attempt();

  Connection& connection_;
  platform::MainQueue& queue_;
  std::vector<xcb_window_t> windows_;
  int attemptsLeft_ = 0;
  platform::WorkItem retry_;
};

}  // namespace hushpane::x11

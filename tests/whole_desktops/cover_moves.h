#pragma once

#include "tests/whole_desktops/desktop_session.h"

namespace hushpane::x11_tests {

// Counts how often the covers are put elsewhere, in place or order, from now on, and what the window manager spends.
class CoverMoves {
 public:
  CoverMoves(const DesktopSession& session, const std::vector<xcb_window_t>& covers);

  int count() const;
  // The processor time that the window manager has taken since its start.
  double managerSeconds() const;

 private:
  XConnection watcher_;
  std::vector<xcb_window_t> windows_;
  pid_t manager_ = 0;
  mutable int count_ = 0;
};

}  // namespace hushpane::x11_tests

#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "tests/x11/wait.h"
#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {

// Looks at a few spots of the screen a thousand times a second from a thread of its own, and at the same moment at
// which window is active.
class ScreenWatch {
 public:
  struct Look {
    Clock::time_point time;
    xcb_window_t activeWindow = XCB_NONE;
    std::vector<Pixel> pixels;  // one for each spot
  };

  ScreenWatch(const std::string& display, std::vector<Point> spots);
  ~ScreenWatch();
  ScreenWatch(const ScreenWatch&) = delete;
  ScreenWatch& operator=(const ScreenWatch&) = delete;

  // Ends the watch and gives all looks in order; the last is taken after this call.
  std::vector<Look> stop();

 private:
  void watch(const std::string& display);
  Look look(const XConnection& x, xcb_atom_t activeWindow) const;

  const std::vector<Point> spots_;
  std::vector<Look> looks_;
  bool tellsActiveWindow_ = false;
  std::atomic<bool> isWatching_ = false;
  std::atomic<bool> isOver_ = false;
  std::thread thread_;
};

}  // namespace hushpane::x11_tests

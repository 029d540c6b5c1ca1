#pragma once

#include <map>
#include <span>
#include <vector>

#include "desktops/x11/server_order.h"

namespace hushpane::x11 {

// Tells windows that have just come above the active one from windows that stay there: a manager raises a window before
// it says that the window is active, and an overlay must not be put above it in between.
class Newcomers {
 public:
  // Whether windows that are above a window when it becomes active are to stay there, or the manager may yet raise it.
  enum class Raise { before, after };
  static constexpr double secondsOfGrace = 0.05;

  explicit Newcomers(Raise raise) : raise_(raise) {}

  // The windows above the wish's sibling that may be about to become active themselves. `now` is in monotonic seconds.
  std::vector<xcb_window_t> above(const PlacementWish& wish, std::span<const OrderItem> stack, double now);
  void forget(xcb_window_t overlay) { known_.erase(overlay); }

 private:
  struct Known {
    xcb_window_t sibling = XCB_WINDOW_NONE;
    std::map<xcb_window_t, double> since;  // when each of them came
  };
  Raise raise_;
  std::map<xcb_window_t, Known> known_;
};

}  // namespace hushpane::x11

#pragma once

#include <functional>
#include <map>
#include <span>
#include <utility>
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

  // `isActiveKnown` asks the server whether the window that is active there is known here: who was held up may have
  // the news still to read.
  Newcomers(Raise raise, std::function<bool()> isActiveKnown)
      : raise_(raise), isActiveKnown_(std::move(isActiveKnown)) {}

  // The windows above the wish's sibling that may be about to become active themselves. `now` is in monotonic seconds.
  std::vector<xcb_window_t> above(const PlacementWish& wish, std::span<const OrderItem> stack, double now);
  void forget(xcb_window_t overlay) { known_.erase(overlay); }

 private:
  struct Arrival {
    double time = 0;
    bool isOver = false;  // it stays
  };
  struct Known {
    xcb_window_t sibling = XCB_WINDOW_NONE;
    std::map<xcb_window_t, Arrival> arrivals;
  };
  bool isOver(Arrival& arrival, double now) const;

  Raise raise_;
  std::function<bool()> isActiveKnown_;
  std::map<xcb_window_t, Known> known_;
};

}  // namespace hushpane::x11

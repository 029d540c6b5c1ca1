#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "desktops/x11/server_order.h"
#include "desktops/x11/stack_model.h"

namespace hushpane::x11 {

// Which requests bring the overlays to their places, and the stack that follows from them.
struct PlacementPlan {
  // What only a window manager can be asked for, of windows that are in its hands.
  struct Request {
    PlacementWish wish;
    bool isElsewhere = false;  // the overlay does not have its bounds
  };

  std::vector<Restack> steps;
  std::vector<Request> requests;
  std::vector<xcb_window_t> order;                          // the children of the root, from bottom to top
  std::map<xcb_window_t, std::vector<xcb_window_t>> clear;  // what an overlay above it must not hide, by overlay
  std::set<xcb_window_t> waiting;                           // overlays that may not be seen yet where they are
  std::optional<double> recheck;                            // seconds until it is to be planned again, come what may

  void recheckIn(double seconds) { recheck = std::min(recheck.value_or(seconds), seconds); }
};

// Brings overlays to their places in the window order. Window managers differ in who decides about it, so there is one
// strategy for each kind.
class Placement {
 public:
  virtual ~Placement() = default;

  // Whether the overlays are ordinary windows of the window manager's, or out of its hands (override-redirect).
  virtual bool isManaged() const = 0;
  // Describes a new overlay of that kind before it is mapped.
  virtual void introduce(const PlacementWish& wish) = 0;
  virtual void forget(xcb_window_t overlay) = 0;

  // Only plans, so that what will lie behind an overlay can be drawn before it is moved.
  virtual PlacementPlan plan(const std::vector<StackEntry>& stack, const std::vector<PlacementWish>& wishes) = 0;
  virtual void carryOut(const PlacementPlan& plan) = 0;
  // Another window became active: whoever restacks now does so for a good reason.
  virtual void activationChanged() = 0;
  // How the latest plan went.
  enum class Outcome {
    open,    // somebody is still to answer
    placed,  // every overlay is where it belongs
    failed,  // one is not, and asking again has not helped
  };
  virtual Outcome outcome() const = 0;
};

}  // namespace hushpane::x11

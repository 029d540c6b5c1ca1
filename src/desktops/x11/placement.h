#pragma once

#include <vector>

#include "desktops/x11/server_order.h"
#include "desktops/x11/stack_model.h"

namespace hushpane::x11 {

// Which requests bring the overlays to their places, and the stack that follows from them, bottom to top.
struct PlacementPlan {
  std::vector<Restack> steps;
  std::vector<xcb_window_t> order;
};

// Brings overlays to their places in the window order. Window managers differ in who decides about it, so there is one
// strategy for each kind.
class Placement {
 public:
  virtual ~Placement() = default;

  // Only plans, so that what will lie behind an overlay can be drawn before it is moved.
  virtual PlacementPlan plan(const std::vector<StackEntry>& stack, const std::vector<PlacementWish>& wishes) = 0;
  virtual void carryOut(const PlacementPlan& plan) = 0;
  // Another window became active: whoever restacks now does so for a good reason.
  virtual void activationChanged() = 0;
};

}  // namespace hushpane::x11

#pragma once

#include "desktops/x11/active_window.h"
#include "desktops/x11/connection.h"
#include "desktops/x11/newcomers.h"
#include "desktops/x11/placement.h"
#include "desktops/x11/restack_budget.h"
#include "desktops/x11/window_tree.h"
#include "platform/main_queue.h"

namespace hushpane::x11 {

// Places override-redirect windows with requests of order to the server, which no window manager intercepts. Some
// managers restack such windows themselves, so a place is asserted again when the tree is wrong.
class ServerOrderPlacement : public Placement {
 public:
  ServerOrderPlacement(Connection& connection, platform::MainQueue& queue, WindowTree& tree, ActiveWindow& active);

  bool isManaged() const override { return false; }
  void introduce(const PlacementWish& wish) override;
  void forget(xcb_window_t overlay) override;
  PlacementPlan plan(const std::vector<StackEntry>& stack, const std::vector<PlacementWish>& wishes) override;
  void carryOut(const PlacementPlan& plan) override;
  void activationChanged() override { budget_.renew(); }
  Outcome outcome() const override { return outcome_; }

 private:
  Connection& connection_;
  platform::MainQueue& queue_;
  WindowTree& tree_;
  RestackBudget budget_;
  Newcomers newcomers_;
  Outcome outcome_ = Outcome::open;
  platform::Token errors_;
};

}  // namespace hushpane::x11

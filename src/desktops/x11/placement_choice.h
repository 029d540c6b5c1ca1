#pragma once

#include <map>
#include <set>
#include <utility>
#include <vector>

#include "desktops/x11/compositor_watch.h"
#include "desktops/x11/managed_placement.h"
#include "desktops/x11/manager_watch.h"
#include "desktops/x11/placement.h"
#include "desktops/x11/server_order_placement.h"

namespace hushpane::x11 {

// The strategy that works here: by what the window manager and the compositor are, and by what the tree shows when it
// was tried. Chosen anew when one of the two changes, and after trouble at the next activation or a while later. A
// strategy that has worked is kept, also when it does not for a while, as when the desktop is shown.
class PlacementChoice : public Placement {
 public:
  PlacementChoice(Connection& connection, platform::MainQueue& queue, WindowTree& tree, ManagerWatch& manager,
                  CompositorWatch& compositor, ActiveWindow& active);

  bool isManaged() const override { return current_->isManaged(); }
  void introduce(const PlacementWish& wish) override { current_->introduce(wish); }
  void forget(xcb_window_t overlay) override;
  PlacementPlan plan(const std::vector<StackEntry>& stack, const std::vector<PlacementWish>& wishes) override;
  void carryOut(const PlacementPlan& plan) override { current_->carryOut(plan); }
  void activationChanged() override;
  Outcome outcome() const override { return current_->outcome(); }

  // Another number where overlays are to be made anew: a manager or compositor that has just begun may have its own
  // idea of the order of windows that were there before it.
  int generation() const { return generation_; }

  // Called when another strategy or generation is in force, while events are being handled.
  platform::Token addChangeHandler(std::function<void()> handler) { return handlers_.add(std::move(handler)); }

 private:
  // What is known of a strategy at one level: a manager may grant its wishes there and not at the other.
  struct Standing {
    bool hasAsked = false;
    double troubledAt = 0;  // when an overlay was last out of its place
    bool isProven = false;  // it has asked, and for a while nothing was out of its place
  };

  std::vector<Placement*> candidates();
  void surroundingsChanged();
  void tryAgain();
  void judge(Standing& standing, const PlacementPlan& plan) const;
  bool choose(Placement& placement);
  void renew();

  platform::MainQueue& queue_;
  ManagerWatch& manager_;
  CompositorWatch& compositor_;
  ServerOrderPlacement serverOrder_;
  ManagedPlacement managed_;
  Placement* current_ = &serverOrder_;
  xcb_window_t managerSeen_ = XCB_WINDOW_NONE;
  xcb_window_t compositorSeen_ = XCB_WINDOW_NONE;
  int generation_ = 0;
  std::map<std::pair<const Placement*, int>, Standing> standings_;
  std::set<const Placement*> failed_;
  double failedAt_ = 0;
  platform::HandlerList<void()> handlers_;
  platform::Token managerChanges_;
  platform::Token compositorChanges_;
};

}  // namespace hushpane::x11

#pragma once

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
// was tried. Chosen anew when one of the two changes. A strategy that has worked is kept, whatever happens for a while.
class PlacementChoice : public Placement {
 public:
  PlacementChoice(Connection& connection, platform::MainQueue& queue, WindowTree& tree, ManagerWatch& manager,
                  CompositorWatch& compositor);

  bool isManaged() const override { return current_->isManaged(); }
  void introduce(const PlacementWish& wish) override { current_->introduce(wish); }
  void forget(xcb_window_t overlay) override;
  PlacementPlan plan(const std::vector<StackEntry>& stack, const std::vector<PlacementWish>& wishes) override;
  void carryOut(const PlacementPlan& plan) override { current_->carryOut(plan); }
  void activationChanged() override { current_->activationChanged(); }
  Outcome outcome() const override { return current_->outcome(); }

  // Called when another strategy is in force, while events are being handled.
  platform::Token addChangeHandler(std::function<void()> handler) { return handlers_.add(std::move(handler)); }

 private:
  std::vector<Placement*> candidates();
  void surroundingsChanged();
  void choose(Placement& placement);

  platform::MainQueue& queue_;
  ManagerWatch& manager_;
  CompositorWatch& compositor_;
  ServerOrderPlacement serverOrder_;
  ManagedPlacement managed_;
  Placement* current_ = &serverOrder_;
  // With the level of the overlays: a manager may do the one and not the other.
  std::set<std::pair<const Placement*, int>> proven_;
  double troubledAt_ = 0;  // when an overlay was last out of its place
  std::set<const Placement*> failed_;
  platform::HandlerList<void()> handlers_;
  platform::Token managerChanges_;
  platform::Token compositorChanges_;
};

}  // namespace hushpane::x11

#pragma once

#include <map>

#include "desktops/x11/connection.h"
#include "desktops/x11/placement.h"
#include "desktops/x11/window_tree.h"
#include "platform/main_queue.h"

namespace hushpane::x11 {

// Places override-redirect windows with requests of order to the server, which no window manager intercepts. Some
// managers restack such windows themselves, so a place is asserted again when the tree is wrong, but only a few times
// for each reason: two restackers must not chase each other for ever.
class ServerOrderPlacement : public Placement {
 public:
  ServerOrderPlacement(Connection& connection, platform::MainQueue& queue, WindowTree& tree);

  PlacementPlan plan(const std::vector<StackEntry>& stack, const std::vector<PlacementWish>& wishes) override;
  void carryOut(const PlacementPlan& plan) override;
  void activationChanged() override { attempts_.clear(); }

 private:
  struct Attempts {
    PlacementWish wish;
    int left = 0;
    double lastAt = 0;
  };
  bool mayAssert(const PlacementWish& wish);

  Connection& connection_;
  platform::MainQueue& queue_;
  WindowTree& tree_;
  std::map<xcb_window_t, Attempts> attempts_;
  platform::Token errors_;
};

}  // namespace hushpane::x11

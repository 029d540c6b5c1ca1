#pragma once

#include <array>
#include <map>
#include <string_view>
#include <vector>

#include "desktops/x11/active_window.h"
#include "desktops/x11/connection.h"
#include "desktops/x11/newcomers.h"
#include "desktops/x11/placement.h"
#include "desktops/x11/restack_budget.h"
#include "platform/main_queue.h"

namespace hushpane::x11 {

// Places ordinary windows by asking the window manager (EWMH: _NET_RESTACK_WINDOW, _NET_WM_STATE), for managers and
// compositors that keep all other windows on top. Such a window never takes the focus and is in no list that people
// see. It stays unseen until the manager has brought it to its place.
class ManagedPlacement : public Placement {
 public:
  ManagedPlacement(Connection& connection, platform::MainQueue& queue, ActiveWindow& active);

  bool isManaged() const override { return true; }
  void introduce(const PlacementWish& wish) override;
  void forget(xcb_window_t overlay) override;
  PlacementPlan plan(const std::vector<StackEntry>& stack, const std::vector<PlacementWish>& wishes) override;
  void carryOut(const PlacementPlan& plan) override;
  void activationChanged() override;
  Outcome outcome() const override { return outcome_; }

 private:
  struct Overlay {
    PixelRect bounds;                      // in the manager's hands
    bool isBeneath = false;                // what the manager was told about its level
    bool isShown = false;                  // it has been at its place
    xcb_window_t frame = XCB_WINDOW_NONE;  // around it, and made to let clicks through
    xcb_window_t sibling = XCB_WINDOW_NONE;
    int failures = 0;  // to get beneath that sibling
    int moves = 0;     // that it was asked for
    int states = 0;    // that the manager gave it unasked
  };
  void planOne(const PlacementWish& wish, const std::vector<StackEntry>& stack, std::vector<OrderItem>& items,
               PlacementPlan& plan);
  void ask(const PlacementPlan::Request& request, const StackEntry& entry, const std::vector<Restack>& steps,
           const std::vector<StackEntry>& stack, std::vector<OrderItem>& items, PlacementPlan& plan);
  void handle(const xcb_generic_event_t& event);
  void refuseStates(xcb_window_t overlay);
  void passClicksThrough(xcb_window_t frame);
  void tell(xcb_window_t overlay, std::string_view message, const std::array<std::uint32_t, 5>& data);

  Connection& connection_;
  platform::MainQueue& queue_;
  RestackBudget budget_;
  std::map<xcb_window_t, Overlay> overlays_;
  Newcomers newcomers_;
  Outcome outcome_ = Outcome::open;
  platform::Token events_;
};

}  // namespace hushpane::x11

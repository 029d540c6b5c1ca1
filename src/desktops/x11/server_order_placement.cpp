#include "desktops/x11/server_order_placement.h"

#include <algorithm>
#include <array>

#include "desktops/x11/own_window.h"

namespace hushpane::x11 {

ServerOrderPlacement::ServerOrderPlacement(Connection& connection, platform::MainQueue& queue, WindowTree& tree,
                                           ActiveWindow& active)
    : connection_(connection),
      queue_(queue),
      tree_(tree),
      newcomers_(Newcomers::Raise::before, [&active] { return active.isLatest(); }) {
  // A sibling that vanished leaves the overlay where it was.
  errors_ = connection_.addErrorHandler([this](const xcb_generic_error_t& error) {
    if (error.major_code == XCB_CONFIGURE_WINDOW) tree_.distrustOrder();
  });
}

void ServerOrderPlacement::introduce(const PlacementWish& wish) {
  introduceOwnWindow(connection_, wish.window, overlayName);
  forbidBypass(connection_, wish.window);
}

void ServerOrderPlacement::forget(xcb_window_t overlay) {
  budget_.forget(overlay);
  newcomers_.forget(overlay);
}

PlacementPlan ServerOrderPlacement::plan(const std::vector<StackEntry>& stack,
                                         const std::vector<PlacementWish>& wishes) {
  auto items = orderItemsOf(stack);
  PlacementPlan plan;
  outcome_ = Outcome::placed;
  for (auto wish : wishes) {
    wish.newcomers = newcomers_.above(wish, items, queue_.now());
    if (!wish.newcomers.empty()) plan.recheckIn(Newcomers::secondsOfGrace);
    const auto steps = restacksFor(wish, items);
    if (steps.empty()) continue;
    const auto verdict = budget_.ask(wish, items, queue_.now());
    if (verdict == RestackBudget::Verdict::lost) {
      outcome_ = Outcome::failed;
      plan.recheckIn(budget_.secondsOfQuiet(wish.window) + RestackBudget::secondsToWait);
      if (coversWindows(wish, items)) plan.waiting.insert(wish.window);
      continue;
    }
    if (outcome_ == Outcome::placed) outcome_ = Outcome::open;
    if (verdict == RestackBudget::Verdict::wait) {
      plan.recheckIn(RestackBudget::secondsToWait);
      continue;
    }
    for (const auto& step : steps) {
      x11::carryOut(step, items);
      plan.steps.push_back(step);
    }
  }
  for (const auto& wish : wishes)
    if (auto clear = leftClear(wish, items); !clear.empty()) plan.clear.emplace(wish.window, std::move(clear));
  for (const auto& item : items) plan.order.push_back(item.id);
  return plan;
}

void ServerOrderPlacement::carryOut(const PlacementPlan& plan) {
  std::uint32_t sequence = 0;
  for (const auto& step : plan.steps) {
    const std::array<std::uint32_t, 2> values{step.sibling, step.mode};
    const bool hasSibling = step.sibling != XCB_WINDOW_NONE;
    const auto cookie = xcb_configure_window(
        connection_.get(), step.window, (hasSibling ? XCB_CONFIG_WINDOW_SIBLING : 0) | XCB_CONFIG_WINDOW_STACK_MODE,
        hasSibling ? values.data() : values.data() + 1);
    sequence = cookie.sequence;
  }
  // The model follows at once; the events that confirm it come later.
  const auto& order = plan.order;
  for (const auto& step : plan.steps) {
    const auto at = std::ranges::find(order, step.window);
    tree_.expectAbove(step.window, at == order.begin() ? xcb_window_t{XCB_WINDOW_NONE} : *(at - 1), sequence);
  }
}

}  // namespace hushpane::x11

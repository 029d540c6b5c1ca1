#include "desktops/x11/server_order_placement.h"

#include <algorithm>
#include <array>

namespace hushpane::x11 {

namespace {

constexpr int attemptsPerReason = 3;
constexpr double secondsOfQuiet = 1;  // after which a wrong place is a new reason

// Window managers and toolkits park helper windows left of or above the screen.
bool isParked(const StackEntry& entry) {
  return entry.bounds.right() <= 0 || entry.bounds.bottom() <= 0;
}

OrderRole roleOf(const StackEntry& entry) {
  if (entry.isOwn) return OrderRole::overlay;
  if (!entry.isVisible() || isParked(entry)) return OrderRole::passive;
  if (entry.facts.kind == WindowKind::desktop) return OrderRole::desktop;
  return layerOf(entry.layerFacts()) == 0 ? OrderRole::ordinary : OrderRole::raised;
}

}  // namespace

ServerOrderPlacement::ServerOrderPlacement(Connection& connection, platform::MainQueue& queue, WindowTree& tree)
    : connection_(connection), queue_(queue), tree_(tree) {
  // A sibling that vanished leaves the overlay where it was.
  errors_ = connection_.addErrorHandler([this](const xcb_generic_error_t& error) {
    if (error.major_code == XCB_CONFIGURE_WINDOW) tree_.distrustOrder();
  });
}

PlacementPlan ServerOrderPlacement::plan(const std::vector<StackEntry>& stack,
                                         const std::vector<PlacementWish>& wishes) {
  std::vector<OrderItem> items;
  items.reserve(stack.size());
  for (const auto& entry : stack) items.push_back({entry.id, roleOf(entry)});
  PlacementPlan plan;
  for (const auto& wish : wishes) {
    const auto steps = restacksFor(wish, items);
    if (steps.empty() || !mayAssert(wish)) continue;
    for (const auto& step : steps) {
      x11::carryOut(step, items);
      plan.steps.push_back(step);
    }
  }
  for (const auto& item : items) plan.order.push_back(item.id);
  return plan;
}

bool ServerOrderPlacement::mayAssert(const PlacementWish& wish) {
  auto& attempts = attempts_[wish.window];
  const double now = queue_.now();
  if (attempts.wish != wish || now - attempts.lastAt > secondsOfQuiet) attempts.left = attemptsPerReason;
  attempts.wish = wish;
  attempts.lastAt = now;
  return attempts.left-- > 0;
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

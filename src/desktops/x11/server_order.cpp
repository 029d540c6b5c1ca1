#include "desktops/x11/server_order.h"

#include <algorithm>
#include <optional>

namespace hushpane::x11 {

namespace {

using Stack = std::span<const OrderItem>;

std::optional<std::size_t> indexOf(Stack stack, xcb_window_t id) {
  const auto found = std::ranges::find(stack, id, &OrderItem::id);
  if (id == XCB_WINDOW_NONE || found == stack.end()) return std::nullopt;
  return static_cast<std::size_t>(found - stack.begin());
}

std::optional<std::size_t> topmost(Stack stack, OrderRole role) {
  for (auto index = stack.size(); index > 0; --index)
    if (stack[index - 1].role == role) return index - 1;
  return std::nullopt;
}

bool isTransparentToOrder(const OrderItem& item) {
  return item.role == OrderRole::passive || item.role == OrderRole::overlay;
}

// Whether nothing that counts lies in [first, last).
bool isFree(Stack stack, std::size_t first, std::size_t last) {
  return std::all_of(stack.begin() + static_cast<std::ptrdiff_t>(first),
                     stack.begin() + static_cast<std::ptrdiff_t>(last), isTransparentToOrder);
}

std::vector<Restack> directlyAboveDesktop(xcb_window_t window, std::size_t at, Stack stack) {
  const auto desktop = topmost(stack, OrderRole::desktop);
  const auto floor = desktop ? *desktop + 1 : 0;
  if (at >= floor && isFree(stack, floor, at)) return {};
  if (desktop) return {{window, stack[*desktop].id, XCB_STACK_MODE_ABOVE}};
  return {{window, XCB_WINDOW_NONE, XCB_STACK_MODE_BELOW}};
}

// A window in front of the sibling that stays in front of an overlay, too.
bool belongsTo(const OrderItem& sibling, const OrderItem& item) {
  return item.id == sibling.id || (item.isCompanion && item.application == sibling.application);
}

bool touches(const OrderItem& item, const PlacementWish& wish) {
  return !item.bounds.intersection(wish.bounds).isEmpty();
}

std::optional<std::size_t> topmostStranger(const PlacementWish& wish, Stack stack) {
  const auto strangers = strangersAbove(wish, stack);
  for (auto each = strangers.rbegin(); each != strangers.rend(); ++each)
    if (std::ranges::find(wish.newcomers, *each) == wish.newcomers.end()) return indexOf(stack, *each);
  return std::nullopt;
}

std::vector<Restack> directlyAbove(xcb_window_t window, std::size_t at, std::size_t sibling, Stack stack) {
  if (at > sibling && isFree(stack, sibling + 1, at)) return {};
  return {{window, stack[sibling].id, XCB_STACK_MODE_ABOVE}};
}

// Whether only windows of the application to which the dialog belongs lie between.
bool isFreeButOwners(Stack stack, std::size_t first, std::size_t dialog) {
  const auto& owned = stack[dialog];
  if (!owned.isCompanion || owned.application == 0) return false;
  const auto between = stack.subspan(first, dialog - first);
  return std::ranges::all_of(between, [&](const OrderItem& item) {
    return isTransparentToOrder(item) || item.application == owned.application;
  });
}

std::vector<Restack> directlyBelow(const PlacementWish& wish, std::size_t at, std::size_t sibling, Stack stack) {
  const auto covered = wish.isHollow ? topmost(stack, OrderRole::ordinary) : topmostStranger(wish, stack);
  if (covered) return directlyAbove(wish.window, at, *covered, stack);
  if (at < sibling && isFree(stack, at + 1, sibling)) return {};
  if (at < sibling && wish.sparesOwners && isFreeButOwners(stack, at + 1, sibling)) return {};
  return {{wish.window, stack[sibling].id, XCB_STACK_MODE_BELOW}};
}

std::vector<Restack> inFront(xcb_window_t window, std::size_t at, Stack stack) {
  const auto front = topmost(stack, OrderRole::ordinary);
  return front ? directlyAbove(window, at, *front, stack) : directlyAboveDesktop(window, at, stack);
}

// Window managers and toolkits park helper windows left of or above the screen.
bool isParked(const StackEntry& entry) {
  return entry.bounds.right() <= 0 || entry.bounds.bottom() <= 0;
}

OrderRole roleOf(const StackEntry& entry) {
  if (entry.isOwn) return OrderRole::overlay;
  if (!entry.isOnScreen() || isParked(entry)) return OrderRole::passive;
  if (entry.facts.kind == WindowKind::desktop) return OrderRole::desktop;
  if (entry.facts.kind == WindowKind::dock) return OrderRole::dock;
  return layerOf(entry.layerFacts()) == 0 ? OrderRole::ordinary : OrderRole::raised;
}

}  // namespace

std::vector<OrderItem> orderItemsOf(const std::vector<StackEntry>& stack) {
  std::vector<OrderItem> items;
  items.reserve(stack.size());
  for (const auto& entry : stack)
    items.push_back({entry.id, roleOf(entry), entry.facts.pid.value_or(0), entry.bounds, entry.moves,
                     entry.facts.kind == WindowKind::dialog || entry.facts.kind == WindowKind::utility});
  return items;
}

std::vector<Restack> restacksFor(const PlacementWish& wish, std::span<const OrderItem> stack) {
  const auto at = indexOf(stack, wish.window);
  if (!at) return {};
  if (wish.level < platform::windowLevel::normal) return directlyAboveDesktop(wish.window, *at, stack);
  if (wish.place == platform::Window::Place::front) return inFront(wish.window, *at, stack);
  if (const auto sibling = indexOf(stack, wish.sibling)) return directlyBelow(wish, *at, *sibling, stack);
  return wish.isPlaced ? std::vector<Restack>{} : inFront(wish.window, *at, stack);
}

std::vector<xcb_window_t> strangersAbove(const PlacementWish& wish, std::span<const OrderItem> stack) {
  std::vector<xcb_window_t> strangers;
  const auto sibling = indexOf(stack, wish.sibling);
  if (!sibling || wish.level < platform::windowLevel::normal || wish.place != platform::Window::Place::below)
    return strangers;
  for (const auto& item : stack.subspan(*sibling + 1))
    if (item.role == OrderRole::ordinary && !belongsTo(stack[*sibling], item) && touches(item, wish))
      strangers.push_back(item.id);
  return strangers;
}

std::vector<xcb_window_t> leftClear(const PlacementWish& wish, std::span<const OrderItem> stack) {
  std::vector<xcb_window_t> clear;
  const auto at = indexOf(stack, wish.window);
  const auto sibling = indexOf(stack, wish.sibling);
  if (!at || wish.level < platform::windowLevel::normal) return clear;
  for (std::size_t index = 0; index < *at; ++index) {
    const auto& item = stack[index];
    const bool isInFront =
        sibling && index >= *sibling && item.role == OrderRole::ordinary && belongsTo(stack[*sibling], item);
    if ((isInFront || item.role == OrderRole::dock) && touches(item, wish)) clear.push_back(item.id);
  }
  return clear;
}

bool coversWindows(const PlacementWish& wish, std::span<const OrderItem> stack) {
  const auto at = indexOf(stack, wish.window);
  if (!at || wish.level >= platform::windowLevel::normal) return false;
  return std::ranges::any_of(
      stack.first(*at), [&](const OrderItem& item) { return item.role == OrderRole::ordinary && touches(item, wish); });
}

void carryOut(const Restack& restack, std::vector<OrderItem>& stack) {
  const auto from = std::ranges::find(stack, restack.window, &OrderItem::id);
  if (from == stack.end()) return;
  const auto item = *from;
  stack.erase(from);
  auto target = stack.begin();
  if (restack.sibling != XCB_WINDOW_NONE) {
    target = std::ranges::find(stack, restack.sibling, &OrderItem::id);
    if (target != stack.end() && restack.mode == XCB_STACK_MODE_ABOVE) ++target;
  }
  stack.insert(target, item);
}

}  // namespace hushpane::x11

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

std::vector<Restack> directlyBelow(xcb_window_t window, std::size_t at, std::size_t sibling, Stack stack) {
  if (at < sibling && isFree(stack, at + 1, sibling)) return {};
  return {{window, stack[sibling].id, XCB_STACK_MODE_BELOW}};
}

std::vector<Restack> inFront(xcb_window_t window, std::size_t at, Stack stack) {
  const auto front = topmost(stack, OrderRole::ordinary);
  if (!front) return directlyAboveDesktop(window, at, stack);
  if (at > *front && isFree(stack, *front + 1, at)) return {};
  return {{window, stack[*front].id, XCB_STACK_MODE_ABOVE}};
}

}  // namespace

std::vector<Restack> restacksFor(const PlacementWish& wish, std::span<const OrderItem> stack) {
  const auto at = indexOf(stack, wish.window);
  if (!at) return {};
  if (wish.level < platform::windowLevel::normal) return directlyAboveDesktop(wish.window, *at, stack);
  if (wish.place == platform::Window::Place::front) return inFront(wish.window, *at, stack);
  if (const auto sibling = indexOf(stack, wish.sibling)) return directlyBelow(wish.window, *at, *sibling, stack);
  return wish.isPlaced ? std::vector<Restack>{} : inFront(wish.window, *at, stack);
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

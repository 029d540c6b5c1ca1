#include "desktops/x11/managed_placement.h"

#include <xcb/shape.h>

#include <algorithm>

#include "desktops/x11/own_window.h"

namespace hushpane::x11 {

namespace {

constexpr double secondsToAnswer = 0.05;  // managers take up to 34 ms
constexpr std::uint32_t fromPager = 2;    // who asks (EWMH, source indication)

// What the overlay is to stand between: windows of the manager's, none at the ends.
struct Neighbours {
  xcb_window_t above = XCB_WINDOW_NONE;
  xcb_window_t below = XCB_WINDOW_NONE;
};

const StackEntry* entryOf(const std::vector<StackEntry>& stack, xcb_window_t window) {
  const auto found = std::ranges::find_if(
      stack, [&](const StackEntry& entry) { return entry.id == window || entry.client == window; });
  return found == stack.end() ? nullptr : &*found;
}

// Windows that people keep beneath others share their level with an overlay that covers the desktop.
std::vector<OrderItem> managedItemsOf(const std::vector<StackEntry>& stack) {
  auto items = orderItemsOf(stack);
  for (std::size_t index = 0; index < items.size(); ++index)
    if (items[index].role == OrderRole::ordinary && stack[index].facts.isBelow) items[index].role = OrderRole::passive;
  return items;
}

template <class Iterator>
xcb_window_t firstClient(Iterator first, Iterator last, const std::vector<StackEntry>& stack) {
  for (; first != last; ++first) {
    if (first->role != OrderRole::ordinary) continue;
    const auto* entry = entryOf(stack, first->id);
    if (entry && (entry->client || !entry->isOverrideRedirect)) return entry->clientOrSelf();
  }
  return XCB_WINDOW_NONE;
}

Neighbours neighboursOf(xcb_window_t frame, const std::vector<OrderItem>& items, const std::vector<StackEntry>& stack) {
  const auto at = std::ranges::find(items, frame, &OrderItem::id);
  if (at == items.end()) return {};
  return {firstClient(at, items.end(), stack), firstClient(std::make_reverse_iterator(at), items.rend(), stack)};
}

}  // namespace

ManagedPlacement::ManagedPlacement(Connection& connection, platform::MainQueue& queue)
    : connection_(connection), queue_(queue), budget_(secondsToAnswer) {}

void ManagedPlacement::introduce(const PlacementWish& wish) {
  introduceOwnWindow(connection_, wish.window, overlayName, "_NET_WM_WINDOW_TYPE_NORMAL");
  introduceToManager(connection_, wish.window, wish.bounds, wish.level < platform::windowLevel::normal);
  forbidBypass(connection_, wish.window);
  overlays_[wish.window].isBeneath = wish.level < platform::windowLevel::normal;
}

void ManagedPlacement::forget(xcb_window_t overlay) {
  budget_.forget(overlay);
  newcomers_.forget(overlay);
  overlays_.erase(overlay);
}

PlacementPlan ManagedPlacement::plan(const std::vector<StackEntry>& stack, const std::vector<PlacementWish>& wishes) {
  auto items = managedItemsOf(stack);
  PlacementPlan plan;
  outcome_ = Outcome::placed;
  for (const auto& wish : wishes) planOne(wish, stack, items, plan);
  for (const auto& item : items) plan.order.push_back(item.id);
  return plan;
}

void ManagedPlacement::planOne(const PlacementWish& wish, const std::vector<StackEntry>& stack,
                               std::vector<OrderItem>& items, PlacementPlan& plan) {
  auto& overlay = overlays_[wish.window];
  const auto* entry = entryOf(stack, wish.window);
  if (!entry || !entry->isMapped) {
    plan.waiting.insert(wish.window);
    outcome_ = Outcome::open;
    return;
  }
  if (entry->id != wish.window && std::exchange(overlay.frame, entry->id) != entry->id) passClicksThrough(entry->id);
  auto placed = wish;
  placed.window = entry->id;
  placed.newcomers = newcomers_.above(wish, items, queue_.now());
  if (!placed.newcomers.empty()) plan.recheck = Newcomers::secondsOfGrace;
  const auto steps = restacksFor(placed, items);
  const bool isAtLevel = overlay.isBeneath == (wish.level < platform::windowLevel::normal);
  if (steps.empty()) overlay.isShown = true;
  if (!overlay.isShown) plan.waiting.insert(wish.window);
  if (!steps.empty() || !isAtLevel || entry->bounds != wish.bounds) ask(wish, *entry, steps, stack, items, plan);
  if (auto clear = leftClear(placed, items); !clear.empty()) plan.clear.emplace(wish.window, std::move(clear));
}

void ManagedPlacement::ask(const PlacementWish& wish, const StackEntry& entry, const std::vector<Restack>& steps,
                           const std::vector<StackEntry>& stack, std::vector<OrderItem>& items, PlacementPlan& plan) {
  const auto verdict = budget_.ask(wish, items, queue_.now());
  const auto before = std::ranges::find(items, entry.id, &OrderItem::id) - items.begin();
  for (const auto& step : steps) x11::carryOut(step, items);  // as it will be, now or when the manager has answered
  if (verdict == RestackBudget::Verdict::lost) {
    if (!steps.empty()) outcome_ = Outcome::failed;
    return;
  }
  if (outcome_ == Outcome::placed) outcome_ = Outcome::open;
  plan.recheck = RestackBudget::secondsToWait;
  if (verdict == RestackBudget::Verdict::wait) return;
  plan.requests.push_back({wish, entry.bounds != wish.bounds});
  if (wish.level < platform::windowLevel::normal) return;
  // Some managers only lower on a request for below, and only raise on one for above. After a change of the level
  // nobody knows where the window will be.
  const auto neighbours = neighboursOf(entry.id, items, stack);
  const auto after = std::ranges::find(items, entry.id, &OrderItem::id) - items.begin();
  const bool isNewLevel = overlays_[wish.window].isBeneath;
  if (neighbours.above && (after < before || isNewLevel))
    plan.steps.push_back({wish.window, neighbours.above, XCB_STACK_MODE_BELOW});
  if (neighbours.below && (after > before || isNewLevel))
    plan.steps.push_back({wish.window, neighbours.below, XCB_STACK_MODE_ABOVE});
}

void ManagedPlacement::carryOut(const PlacementPlan& plan) {
  for (const auto& [wish, isElsewhere] : plan.requests) {
    const bool isBeneath = wish.level < platform::windowLevel::normal;
    constexpr std::uint32_t remove = 0, add = 1;
    if (std::exchange(overlays_[wish.window].isBeneath, isBeneath) != isBeneath || isBeneath)
      tell(wish.window, "_NET_WM_STATE",
           {isBeneath ? add : remove, connection_.atom("_NET_WM_STATE_BELOW"), 0, fromPager, 0});
    if (isElsewhere) configureBounds(connection_, wish.window, wish.bounds);
  }
  for (const auto& step : plan.steps)
    tell(step.window, "_NET_RESTACK_WINDOW", {fromPager, step.sibling, step.mode, 0, 0});
}

// A manager may leave the frame of a window that lets clicks through in their way.
void ManagedPlacement::passClicksThrough(xcb_window_t frame) {
  xcb_shape_rectangles(connection_.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, frame, 0, 0,
                       0, nullptr);
}

void ManagedPlacement::tell(xcb_window_t overlay, std::string_view message, const std::array<std::uint32_t, 5>& data) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = overlay;
  event.type = connection_.atom(message);
  std::ranges::copy(data, event.data.data32);
  xcb_send_event(connection_.get(), 0, connection_.root(),
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&event));
}

}  // namespace hushpane::x11

#include "desktops/x11/managed_placement.h"

#include <xcb/shape.h>

#include <algorithm>

#include "desktops/shared/debug_log.h"
#include "desktops/x11/own_window.h"
#include "desktops/x11/property.h"

namespace hushpane::x11 {

namespace {

constexpr double secondsToAnswer = 0.05;  // managers take up to 34 ms
constexpr std::uint32_t fromPager = 2;    // who asks (EWMH, source indication)
constexpr int mostFailures = 2;           // to get beneath a window
constexpr int mostMoves = 3;              // to where it should be
constexpr int mostRefusals = 6;           // of states

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

ManagedPlacement::ManagedPlacement(Connection& connection, platform::MainQueue& queue, ActiveWindow& active)
    : connection_(connection),
      queue_(queue),
      budget_(secondsToAnswer),
      newcomers_(Newcomers::Raise::after, [&active] { return active.isLatest(); }),
      events_(connection.addEventHandler([this](const auto& event) { handle(event); })) {}

void ManagedPlacement::introduce(const PlacementWish& wish) {
  introduceOwnWindow(connection_, wish.window, overlayName, "_NET_WM_WINDOW_TYPE_NORMAL");
  auto& overlay = overlays_[wish.window];
  overlay.isBeneath = wish.level < platform::windowLevel::normal;
  overlay.bounds = managedBounds(connection_, wish.bounds);
  introduceToManager(connection_, wish.window, overlay.bounds, overlay.isBeneath);
  forbidBypass(connection_, wish.window);
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(connection_.get(), wish.window, XCB_CW_EVENT_MASK, &events);
}

void ManagedPlacement::activationChanged() {
  budget_.renew();
  for (auto& [window, overlay] : overlays_) overlay.failures = 0;
}

void ManagedPlacement::handle(const xcb_generic_event_t& event) {
  if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) return;
  const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
  if (property.atom == connection_.atom("_NET_WM_STATE") && overlays_.contains(property.window))
    refuseStates(property.window);
}

// A manager may take a window without a frame, as large as the display, for one of full screen, and put its bars away.
void ManagedPlacement::refuseStates(xcb_window_t overlay) {
  constexpr std::uint32_t longestList = 32, remove = 0;
  const auto states = propertyValues(connection_, overlay, "_NET_WM_STATE", longestList);
  for (const auto name : {"_NET_WM_STATE_FULLSCREEN", "_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ"}) {
    if (std::ranges::find(states, connection_.atom(name)) == states.end()) continue;
    if (++overlays_[overlay].states > mostRefusals) return;
    desktops::debugLog(std::string("the window manager gave a cover the state ") + name);
    tell(overlay, "_NET_WM_STATE", {remove, connection_.atom(name), 0, fromPager, 0});
  }
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
  if (std::exchange(overlay.sibling, wish.sibling) != wish.sibling) overlay.failures = 0;
  auto placed = wish;
  placed.window = entry->id;
  placed.sparesOwners = true;
  placed.isHollow = overlay.failures >= mostFailures && wish.sibling != XCB_WINDOW_NONE;
  placed.newcomers = newcomers_.above(wish, items, queue_.now());
  if (!placed.newcomers.empty()) plan.recheckIn(Newcomers::secondsOfGrace);
  const auto steps = restacksFor(placed, items);
  const bool isAtLevel = overlay.isBeneath == (wish.level < platform::windowLevel::normal);
  if (steps.empty()) overlay.isShown = true;
  if (!overlay.isShown) plan.waiting.insert(wish.window);
  // Some keep windows off their bars, which they draw above all windows.
  const bool isElsewhere = entry->bounds != overlay.bounds && overlay.moves < mostMoves;
  if (!steps.empty() || !isAtLevel || isElsewhere) ask({wish, isElsewhere}, *entry, steps, stack, items, plan);
  if (auto clear = leftClear(placed, items); !clear.empty()) plan.clear.emplace(wish.window, std::move(clear));
}

void ManagedPlacement::ask(const PlacementPlan::Request& request, const StackEntry& entry,
                           const std::vector<Restack>& steps, const std::vector<StackEntry>& stack,
                           std::vector<OrderItem>& items, PlacementPlan& plan) {
  const auto& wish = request.wish;
  const auto verdict = budget_.ask(wish, items, queue_.now());
  const bool isBeneath = wish.level < platform::windowLevel::normal;
  if (verdict == RestackBudget::Verdict::lost) {
    plan.recheckIn(budget_.secondsOfQuiet(wish.window) + RestackBudget::secondsToWait);
    if (!steps.empty()) outcome_ = Outcome::failed;
    if (coversWindows(wish, items)) plan.waiting.insert(wish.window);
    return;
  }
  if (outcome_ == Outcome::placed) outcome_ = Outcome::open;
  plan.recheckIn(RestackBudget::secondsToWait);
  const auto place = [&entry](const auto& order) {
    return std::ranges::find(order, entry.id, &OrderItem::id) - order.begin();
  };
  auto expected = items;
  for (const auto& step : steps) x11::carryOut(step, expected);
  const bool isRaised = place(expected) > place(items);
  const auto neighbours = neighboursOf(entry.id, expected, stack);
  auto& overlay = overlays_[wish.window];
  const bool isAsked = verdict == RestackBudget::Verdict::move;
  if (isAsked && !steps.empty()) ++overlay.failures;
  // What it is to leave clear is found out where it will be. Where it was not lowered when it was asked for, it is what
  // it hides there.
  if (isRaised || isBeneath || overlay.failures < mostFailures) items = std::move(expected);
  if (!isAsked) return;
  if (request.isElsewhere) ++overlay.moves;
  plan.requests.push_back(request);
  if (isBeneath || (steps.empty() && !overlay.isBeneath)) return;
  // Some managers only lower on a request for below, and only raise on one for above, one of them too far. After a
  // change of the level nobody knows where the window will be.
  if (neighbours.below && (isRaised || overlay.isBeneath))
    plan.steps.push_back({wish.window, neighbours.below, XCB_STACK_MODE_ABOVE});
  if (neighbours.above) plan.steps.push_back({wish.window, neighbours.above, XCB_STACK_MODE_BELOW});
}

void ManagedPlacement::carryOut(const PlacementPlan& plan) {
  for (const auto& [wish, isElsewhere] : plan.requests) {
    const bool isBeneath = wish.level < platform::windowLevel::normal;
    constexpr std::uint32_t remove = 0, add = 1;
    if (std::exchange(overlays_[wish.window].isBeneath, isBeneath) != isBeneath || isBeneath)
      tell(wish.window, "_NET_WM_STATE",
           {isBeneath ? add : remove, connection_.atom("_NET_WM_STATE_BELOW"), 0, fromPager, 0});
    if (isElsewhere) configureBounds(connection_, wish.window, overlays_[wish.window].bounds);
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

#include "desktops/x11/placement_choice.h"

#include <algorithm>
#include <utility>

#include "desktops/shared/debug_log.h"

namespace hushpane::x11 {

namespace {
constexpr double secondsOfPeace = 0.5;
}

PlacementChoice::PlacementChoice(Connection& connection, platform::MainQueue& queue, WindowTree& tree,
                                 ManagerWatch& manager, CompositorWatch& compositor)
    : queue_(queue),
      manager_(manager),
      compositor_(compositor),
      serverOrder_(connection, queue, tree),
      managed_(connection, queue) {
  managerChanges_ = manager_.addChangeHandler([this] { surroundingsChanged(); });
  compositorChanges_ = compositor_.addChangeHandler([this] { surroundingsChanged(); });
  surroundingsChanged();
}

// The best first. A manager that composites by itself may paint its own windows in an order that the server's tree does
// not show, with every other window on top.
std::vector<Placement*> PlacementChoice::candidates() {
  if (!manager_.supports("_NET_RESTACK_WINDOW")) return {&serverOrder_};
  if (manager_.owns(compositor_.owner())) return {&managed_, &serverOrder_};
  return {&serverOrder_, &managed_};
}

void PlacementChoice::surroundingsChanged() {
  provenLevels_.clear();
  failed_.clear();
  troubledAt_ = queue_.now();
  const bool isManagerNew = std::exchange(managerSeen_, manager_.window()) != manager_.window();
  const bool isCompositorNew = std::exchange(compositorSeen_, compositor_.owner()) != compositor_.owner();
  const bool isStrategyNew = choose(*candidates().front());
  if (isManagerNew || isCompositorNew || isStrategyNew) renew();
}

// Returns whether it is another one than before.
bool PlacementChoice::choose(Placement& placement) {
  if (std::exchange(current_, &placement) == &placement) return false;
  desktops::debugLog(std::string("overlays are placed by ") +
                     (placement.isManaged() ? "the window manager" : "the order in the server"));
  return true;
}

void PlacementChoice::renew() {
  ++generation_;
  handlers_.forEach([](const auto& handler) { handler(); });
}

void PlacementChoice::forget(xcb_window_t overlay) {
  serverOrder_.forget(overlay);
  managed_.forget(overlay);
}

PlacementPlan PlacementChoice::plan(const std::vector<StackEntry>& stack, const std::vector<PlacementWish>& wishes) {
  auto plan = current_->plan(stack, wishes);
  if (current_->outcome() != Outcome::placed) troubledAt_ = queue_.now();
  if (current_ == &managed_ && queue_.now() - troubledAt_ > secondsOfPeace) provenLevels_.insert(wishes.front().level);
  const bool isProven = current_ == &managed_ && provenLevels_.contains(wishes.front().level);
  if (current_->outcome() != Outcome::failed || isProven || !failed_.insert(current_).second) return plan;
  const auto all = candidates();
  const auto next = std::ranges::find_if(all, [this](const Placement* each) { return !failed_.contains(each); });
  // Where none works, the one that should is the least bad.
  if (choose(next == all.end() ? *all.front() : **next)) renew();
  plan.steps.clear();
  plan.requests.clear();
  return plan;
}

}  // namespace hushpane::x11

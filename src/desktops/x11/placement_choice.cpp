#include "desktops/x11/placement_choice.h"

#include <algorithm>
#include <utility>

#include "desktops/shared/debug_log.h"

namespace hushpane::x11 {

namespace {
constexpr double secondsOfPeace = 0.5;
constexpr double secondsToTryAgain = 10;
}  // namespace

PlacementChoice::PlacementChoice(Connection& connection, platform::MainQueue& queue, WindowTree& tree,
                                 ManagerWatch& manager, CompositorWatch& compositor, ActiveWindow& active)
    : queue_(queue),
      manager_(manager),
      compositor_(compositor),
      serverOrder_(connection, queue, tree, active),
      managed_(connection, queue, active) {
  managerChanges_ = manager_.addChangeHandler([this] { surroundingsChanged(); });
  compositorChanges_ = compositor_.addChangeHandler([this] { surroundingsChanged(); });
  surroundingsChanged();
}

// The best first. A manager that composites by itself may paint its own windows in an order that the server's tree does
// not show, with every other window on top.
std::vector<Placement*> PlacementChoice::candidates() {
  if (!manager_.supports("_NET_RESTACK_WINDOW")) return {&serverOrder_};
  if (manager_.owns(compositor_.owner())) return {&managed_};
  return {&serverOrder_, &managed_};
}

void PlacementChoice::surroundingsChanged() {
  standings_.clear();
  failed_.clear();
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

// The next activation may have better luck with what did not work at the last one.
void PlacementChoice::activationChanged() {
  current_->activationChanged();
  if (!failed_.empty() && current_->outcome() == Outcome::failed) tryAgain();
}

void PlacementChoice::tryAgain() {
  failed_.clear();
  if (choose(*candidates().front())) renew();
}

void PlacementChoice::judge(Standing& standing, const PlacementPlan& plan) const {
  const double now = queue_.now();
  if (standing.hasAsked && now - standing.troubledAt > secondsOfPeace) standing.isProven = true;
  if (current_->outcome() != Outcome::placed) standing.troubledAt = now;
  if (!plan.steps.empty() || !plan.requests.empty()) standing.hasAsked = true;
}

PlacementPlan PlacementChoice::plan(const std::vector<StackEntry>& stack, const std::vector<PlacementWish>& wishes) {
  if (!failed_.empty() && queue_.now() - failedAt_ > secondsToTryAgain) failed_.clear();
  auto plan = current_->plan(stack, wishes);
  auto& standing = standings_[{current_, wishes.front().level}];
  judge(standing, plan);
  if (current_->outcome() != Outcome::failed || standing.isProven || !failed_.insert(current_).second) return plan;
  failedAt_ = queue_.now();
  const auto all = candidates();
  const auto next = std::ranges::find_if(all, [this](const Placement* each) { return !failed_.contains(each); });
  // Where none works, the one that should is the least bad.
  if (!choose(next == all.end() ? *all.front() : **next)) return plan;
  renew();
  plan.steps.clear();
  plan.requests.clear();
  return plan;
}

}  // namespace hushpane::x11

#include "desktops/x11/restack_budget.h"

#include <algorithm>
#include <utility>

namespace hushpane::x11 {

namespace {

constexpr int movesPerReason = 3;
constexpr double secondsOfQuiet = 1;  // after which a wrong place is a new reason
constexpr double movesPerSecond = 20;
constexpr double movesInARow = 6;

std::vector<xcb_window_t> othersOf(std::span<const OrderItem> stack) {
  std::vector<xcb_window_t> others;
  for (const auto& item : stack)
    if (item.role != OrderRole::overlay && item.role != OrderRole::passive) others.push_back(item.id);
  return others;
}

}  // namespace

RestackBudget::Verdict RestackBudget::ask(const PlacementWish& wish, std::span<const OrderItem> stack, double now) {
  const auto [found, isFirst] = accounts_.try_emplace(wish.window);
  auto& account = found->second;
  if (isFirst) account.tokens = movesInARow;
  account.tokens =
      std::min(movesInARow, account.tokens + (now - std::exchange(account.filledAt, now)) * movesPerSecond);
  auto others = othersOf(stack);
  const bool isQuiet = now - std::exchange(account.askedAt, now) > secondsOfQuiet;
  if (isFirst || isQuiet || account.wish != wish || account.others != others) {
    account.left = movesPerReason;
    account.wish = wish;
    account.others = std::move(others);
  } else if (now - account.movedAt < gap_) {
    return Verdict::wait;
  }
  if (account.left == 0) return now - account.movedAt < secondsToWait ? Verdict::wait : Verdict::lost;
  if (account.tokens < 1) return Verdict::wait;
  --account.left;
  --account.tokens;
  account.movedAt = now;
  return Verdict::move;
}

}  // namespace hushpane::x11

#include "desktops/x11/restack_budget.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace hushpane::x11 {

namespace {

constexpr int movesPerReason = 3;
constexpr int movesInAll = 24;
constexpr double secondsOfFirstQuiet = 1;  // after which a wrong place is a new reason
constexpr int mostDoublings = 6;
constexpr double movesPerSecond = 20;
constexpr double movesInARow = 6;

}  // namespace

RestackBudget::Surroundings RestackBudget::surroundingsOf(std::span<const OrderItem> stack) {
  Surroundings surroundings;
  for (const auto& item : stack) {
    if (item.role == OrderRole::overlay || item.role == OrderRole::passive) continue;
    surroundings.others.push_back(item.id);
    surroundings.moves += item.moves;
  }
  return surroundings;
}

double RestackBudget::secondsOfQuiet(xcb_window_t overlay) const {
  const auto account = accounts_.find(overlay);
  const int losses = account == accounts_.end() ? 0 : account->second.losses;
  return std::ldexp(secondsOfFirstQuiet, std::max(losses - 1, 0));
}

RestackBudget::Verdict RestackBudget::ask(const PlacementWish& wish, std::span<const OrderItem> stack, double now) {
  const auto [found, isFirst] = accounts_.try_emplace(wish.window);
  auto& account = found->second;
  if (isFirst) account.tokens = movesInARow;
  account.tokens =
      std::min(movesInARow, account.tokens + (now - std::exchange(account.filledAt, now)) * movesPerSecond);
  auto surroundings = surroundingsOf(stack);
  const auto overlay = std::ranges::find(stack, wish.window, &OrderItem::id);
  const auto ownMoves = overlay == stack.end() ? 0 : overlay->moves;
  const bool isQuiet = now - std::exchange(account.askedAt, now) > secondsOfQuiet(wish.window);
  const bool isUntouched = !gap_ && account.left == 0 && account.ownMoves == ownMoves;
  if (isFirst || isQuiet) account.leftInAll = movesInAll;
  if (isFirst || isQuiet || isUntouched || account.wish != wish || account.surroundings != surroundings) {
    account.left = movesPerReason;
    account.wish = wish;
    account.surroundings = std::move(surroundings);
    account.ownMoves = ownMoves;
  } else if (gap_ && now - account.movedAt < *gap_) {
    return Verdict::wait;
  }
  if (account.left == 0 || account.leftInAll == 0) {
    if (now - account.movedAt < secondsToWait) return Verdict::wait;
    if (!std::exchange(account.isLost, true)) account.losses = std::min(account.losses + 1, mostDoublings);
    return Verdict::lost;
  }
  if (account.tokens < 1) return Verdict::wait;
  account.isLost = false;
  --account.left;
  --account.leftInAll;
  --account.tokens;
  account.movedAt = now;
  return Verdict::move;
}

}  // namespace hushpane::x11

#include "desktops/x11/newcomers.h"

#include <utility>

namespace hushpane::x11 {

std::vector<xcb_window_t> Newcomers::above(const PlacementWish& wish, std::span<const OrderItem> stack, double now) {
  auto& known = known_[wish.window];
  const bool isJustActive = std::exchange(known.sibling, wish.sibling) != wish.sibling;
  const Arrival arrival{now, isJustActive && raise_ == Raise::before};
  const auto before = std::exchange(known.arrivals, {});
  std::vector<xcb_window_t> newcomers;
  for (const auto window : strangersAbove(wish, stack)) {
    const auto found = before.find(window);
    const bool isNew = isJustActive || found == before.end();
    auto& current = known.arrivals.emplace(window, isNew ? arrival : found->second).first->second;
    if (!isOver(current, now)) newcomers.push_back(window);
  }
  return newcomers;
}

bool Newcomers::isOver(Arrival& arrival, double now) const {
  if (!arrival.isOver && now - arrival.time >= secondsOfGrace) {
    arrival.isOver = isActiveKnown_();
    arrival.time = now;
  }
  return arrival.isOver;
}

}  // namespace hushpane::x11

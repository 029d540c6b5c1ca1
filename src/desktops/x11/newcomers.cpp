#include "desktops/x11/newcomers.h"

#include <limits>
#include <utility>

namespace hushpane::x11 {

std::vector<xcb_window_t> Newcomers::above(const PlacementWish& wish, std::span<const OrderItem> stack, double now) {
  constexpr double always = -std::numeric_limits<double>::infinity();
  auto& known = known_[wish.window];
  const bool isJustActive = std::exchange(known.sibling, wish.sibling) != wish.sibling;
  const double arrival = isJustActive && raise_ == Raise::before ? always : now;
  const auto before = isJustActive ? std::map<xcb_window_t, double>{} : std::exchange(known.since, {});
  known.since.clear();
  std::vector<xcb_window_t> newcomers;
  for (const auto window : strangersAbove(wish, stack)) {
    const auto found = before.find(window);
    const double since = found == before.end() ? arrival : found->second;
    known.since.emplace(window, since);
    if (now - since < secondsOfGrace) newcomers.push_back(window);
  }
  return newcomers;
}

}  // namespace hushpane::x11

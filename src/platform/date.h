#pragma once

#include <compare>

namespace hushpane::platform {

// A moment of the wall clock.
struct Date {
  double secondsSince1970 = 0;
  auto operator<=>(const Date&) const = default;
};

// Seconds from `earlier` to `later`; negative when the order is the other way round.
constexpr double secondsBetween(Date earlier, Date later) {
  return later.secondsSince1970 - earlier.secondsSince1970;
}

}  // namespace hushpane::platform

#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "desktops/x11/server_order.h"

namespace hushpane::x11 {

// Decides how often an overlay's place may be asserted: two restackers must not chase each other for ever. Somebody who
// moves the overlay itself is answered three times and has then won, until something else changes. Where it is other
// windows that move, every move is a new reason, but only so many a second, and so many in all until the next
// activation or a while of quiet, which gets longer each time.
class RestackBudget {
 public:
  enum class Verdict {
    move,  // the overlay may be moved now; it is counted
    wait,  // ask again a little later
    lost,  // moving it has not helped
  };
  static constexpr double secondsToWait = 0.1;

  // Whoever moves overlays by itself has lost only when somebody was seen to move them back. Whoever asks for it waits
  // `gap` seconds for the answer, and has lost without one.
  RestackBudget() = default;
  explicit RestackBudget(double gap) : gap_(gap) {}

  // To be asked about an overlay that is out of place. `now` is in monotonic seconds.
  Verdict ask(const PlacementWish& wish, std::span<const OrderItem> stack, double now);
  // Everybody restacks for a good reason now.
  void renew() { accounts_.clear(); }
  void forget(xcb_window_t overlay) { accounts_.erase(overlay); }
  // After which what was lost may be asked for again, if nothing happens meanwhile.
  double secondsOfQuiet(xcb_window_t overlay) const;

 private:
  struct Surroundings {
    std::vector<xcb_window_t> others;  // what can be seen, in order
    std::uint64_t moves = 0;           // of theirs
    bool operator==(const Surroundings&) const = default;
  };
  static Surroundings surroundingsOf(std::span<const OrderItem> stack);

  struct Account {
    PlacementWish wish;
    Surroundings surroundings;   // when it was last moved
    std::uint32_t ownMoves = 0;  // then, by somebody else
    int left = 0;                // for this reason
    int leftInAll = 0;
    int losses = 0;
    bool isLost = false;
    double movedAt = 0;
    double askedAt = 0;
    double tokens = 0;
    double filledAt = 0;
  };

  std::optional<double> gap_;
  std::map<xcb_window_t, Account> accounts_;
};

}  // namespace hushpane::x11

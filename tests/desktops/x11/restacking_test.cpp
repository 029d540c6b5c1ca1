#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "desktops/x11/newcomers.h"
#include "desktops/x11/restack_budget.h"

namespace hushpane::x11 {
namespace {

constexpr xcb_window_t overlay = 1, active = 2, stranger = 3, otherStranger = 4;
constexpr PixelRect display{0, 0, 100, 100};

OrderItem item(xcb_window_t id) {
  return {id,   id == overlay ? OrderRole::overlay : OrderRole::ordinary, static_cast<std::int32_t>(id), display, 0,
          false};
}

PlacementWish below(xcb_window_t sibling) {
  return {.window = overlay,
          .place = platform::Window::Place::below,
          .sibling = sibling,
          .bounds = display,
          .newcomers = {}};
}

using Verdict = RestackBudget::Verdict;

class RestackBudgetTest : public testing::Test {
 protected:
  // How often the overlay is moved when the place is wrong `count` times, `gap` seconds apart.
  int moves(
      int count, double gap, const std::function<void()>& between = [] {}) {
    int number = 0;
    for (int turn = 0; turn < count; ++turn) {
      now += gap;
      last = budget.ask(wish, stack, now);
      number += last == Verdict::move;
      between();
    }
    return number;
  }

  RestackBudget budget;
  PlacementWish wish = below(active);
  std::vector<OrderItem> stack{item(stranger), item(otherStranger), item(overlay), item(active)};
  double now = 100;
  Verdict last = Verdict::wait;
};

TEST_F(RestackBudgetTest, SomebodyWhoMovesTheOverlayWinsUntilSomethingChanges) {
  const auto takeBack = [this] { ++stack[2].moves; };
  EXPECT_EQ(moves(4, 0.001, takeBack), 3);
  EXPECT_EQ(last, Verdict::wait) << "answers need their time";
  EXPECT_EQ(moves(396, 0.001, takeBack), 0);
  EXPECT_EQ(last, Verdict::lost);
  ++stack[0].moves;
  EXPECT_EQ(moves(400, 0.001, takeBack), 3) << "another window was moved, too";
  wish = below(stranger);
  EXPECT_EQ(moves(400, 0.001, takeBack), 3) << "another window is active";
  budget.renew();
  EXPECT_EQ(moves(400, 0.001, takeBack), 3) << "the same one was activated again";
  now += 1.1;
  EXPECT_EQ(moves(400, 0.001, takeBack), 3) << "nothing was wrong for a second";
}

TEST_F(RestackBudgetTest, OtherWindowsThatMoveAreFollowedButNotForEver) {
  const auto raise = [this] { ++stack[0].moves; };
  EXPECT_EQ(moves(10, 0.1, raise), 10) << "ten times a second";
  EXPECT_LE(moves(500, 0.001, raise), 20) << "half a second";
  EXPECT_NE(last, Verdict::lost);
  EXPECT_LE(moves(100'000, 0.001, raise), 10) << "a manager that moves others in each answer never ends it";
  EXPECT_EQ(last, Verdict::lost);
  now += budget.secondsOfQuiet(overlay) + 0.1;
  EXPECT_GT(moves(5000, 0.001, raise), 20) << "after a quiet while it is tried again";
  EXPECT_EQ(last, Verdict::lost);
  now += 1.1;
  EXPECT_EQ(moves(100, 0.001, raise), 0) << "which must be longer each time";
  budget.renew();
  EXPECT_GT(moves(5000, 0.001, raise), 20) << "another activation";
}

TEST_F(RestackBudgetTest, IsNotLostWhereNobodyWasSeenToMoveTheOverlay) {
  EXPECT_GE(moves(20, 0.1), 10);
  EXPECT_NE(last, Verdict::lost);
  RestackBudget asking(0.05);
  for (int turn = 0; turn < 4; ++turn) last = asking.ask(wish, stack, now += 0.1);
  EXPECT_EQ(last, Verdict::wait);
  EXPECT_EQ(asking.ask(wish, stack, now += 0.1), Verdict::lost) << "nobody answers";
}

TEST_F(RestackBudgetTest, LeavesAManagerTheTimeToAnswer) {
  RestackBudget patient(0.05);
  EXPECT_EQ(patient.ask(wish, stack, now), Verdict::move);
  EXPECT_EQ(patient.ask(wish, stack, now + 0.04), Verdict::wait);
  EXPECT_EQ(patient.ask(wish, stack, now + 0.06), Verdict::move);
  EXPECT_EQ(patient.ask(below(stranger), stack, now + 0.07), Verdict::move) << "another wish does not wait";
}

TEST(NewcomersTest, AWindowThatIsRaisedMayBeAboutToBecomeActive) {
  using Windows = std::vector<xcb_window_t>;
  for (const auto raise : {Newcomers::Raise::before, Newcomers::Raise::after}) {
    SCOPED_TRACE(raise == Newcomers::Raise::before ? "before" : "after");
    bool isActiveKnown = true;
    Newcomers newcomers(raise, [&isActiveKnown] { return isActiveKnown; });
    const std::vector<OrderItem> unraised{item(active), item(stranger)};
    const bool mayYetBeRaised = raise == Newcomers::Raise::after;
    EXPECT_EQ(newcomers.above(below(active), unraised, 1), mayYetBeRaised ? Windows{stranger} : Windows{});
    EXPECT_EQ(newcomers.above(below(active), unraised, 1.06), Windows{}) << "it stays above";
    const std::vector<OrderItem> raised{item(active), item(stranger), item(otherStranger)};
    EXPECT_EQ(newcomers.above(below(active), raised, 1.07), Windows{otherStranger});
    EXPECT_EQ(newcomers.above(below(active), raised, 1.1), Windows{otherStranger});
    isActiveKnown = false;
    EXPECT_EQ(newcomers.above(below(active), raised, 1.13), Windows{otherStranger}) << "the news is still to be read";
    EXPECT_EQ(newcomers.above(below(active), raised, 1.17), Windows{otherStranger});
    isActiveKnown = true;
    EXPECT_EQ(newcomers.above(below(active), raised, 1.19), Windows{});
    const std::vector<OrderItem> again{item(active), item(otherStranger), item(stranger)};
    EXPECT_EQ(newcomers.above(below(active), again, 1.2), Windows{}) << "known ones may change places";
    EXPECT_EQ(newcomers.above(below(otherStranger), again, 1.21), mayYetBeRaised ? Windows{stranger} : Windows{});
  }
}

}  // namespace
}  // namespace hushpane::x11

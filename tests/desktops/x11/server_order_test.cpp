#include "desktops/x11/server_order.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace hushpane::x11 {
namespace {

using platform::Window;

constexpr PixelRect display{0, 0, 100, 100};

// A stack from bottom to top, a letter for each window on that display: d and D desktop, o and p ordinary, c a dialog
// of their application, s and S ordinary of another application, b a dock, r raised, x passive, 1 and 2 overlays. O is
// another application's on the next display.
std::vector<OrderItem> stackOf(const std::string& letters) {
  using enum OrderRole;
  const std::map<char, OrderRole> roles{{'d', desktop},  {'D', desktop},  {'o', ordinary}, {'p', ordinary},
                                        {'s', ordinary}, {'S', ordinary}, {'O', ordinary}, {'c', ordinary},
                                        {'b', dock},     {'r', raised},   {'x', passive},  {'1', overlay},
                                        {'2', overlay}};
  std::vector<OrderItem> stack;
  for (const char letter : letters) {
    const bool isStranger = letter == 's' || letter == 'S' || letter == 'O';
    stack.push_back({static_cast<xcb_window_t>(letter), roles.at(letter), isStranger ? 2 : 1,
                     letter == 'O' ? display.translated(100, 0) : display, 0, letter == 'c'});
  }
  return stack;
}

std::string lettersOf(const std::vector<OrderItem>& stack) {
  std::string letters;
  for (const auto& item : stack) letters += static_cast<char>(item.id);
  return letters;
}

struct Case {
  const char* name;
  const char* before;
  PlacementWish wish;
  const char* after;  // the same as before: nothing is asked of the server
};

xcb_window_t idOf(char letter) {
  return static_cast<xcb_window_t>(letter);
}
PlacementWish front(char window = '1') {
  return {.window = idOf(window), .bounds = display, .newcomers = {}};
}
PlacementWish sparing(PlacementWish wish) {
  wish.sparesOwners = true;
  return wish;
}
PlacementWish hollow(PlacementWish wish) {
  wish.isHollow = true;
  return wish;
}
PlacementWish aboveDesktop(char window = '1') {
  return {.window = idOf(window), .level = platform::windowLevel::aboveDesktop, .bounds = display, .newcomers = {}};
}
PlacementWish below(char sibling, bool isPlaced = true, char window = '1', std::vector<xcb_window_t> newcomers = {}) {
  return {.window = idOf(window),
          .place = Window::Place::below,
          .sibling = idOf(sibling),
          .isPlaced = isPlaced,
          .bounds = display,
          .newcomers = std::move(newcomers)};
}

TEST(ServerOrderTest, MovesAnOverlayOnlyWhereItIsOutOfPlace) {
  const Case cases[] = {
      {"above the desktop from the top", "dop1", aboveDesktop(), "d1op"},
      {"above the desktop already", "d1op", aboveDesktop(), "d1op"},
      {"above the desktop, what is not seen between", "dx1op", aboveDesktop(), "dx1op"},
      {"above the desktop from beneath it", "1dop", aboveDesktop(), "d1op"},
      {"above the topmost of two desktops", "dDo1", aboveDesktop(), "dD1o"},
      {"without a desktop to the bottom", "op1", aboveDesktop(), "1op"},
      {"without a desktop at the bottom already", "x1op", aboveDesktop(), "x1op"},
      {"below a window from beneath others", "1op", below('p'), "o1p"},
      {"below a window from above it", "op1r", below('p'), "o1pr"},
      {"below a window already, an unseen one between", "o1xp", below('p'), "o1xp"},
      {"below a window already, the other overlay between", "o12p", below('p'), "o12p"},
      {"below a window that is gone: stays", "o1p", below('q'), "o1p"},
      {"below a window that is gone, never placed: in front", "1opr", below('q', false), "op1r"},
      {"a window that the manager did not raise: above the strangers over it", "1osSr", below('o'), "osS1r"},
      {"above the strangers already, beneath a dialog", "os1c", below('o'), "os1c"},
      {"another window of the same application is a stranger", "1opr", below('o'), "op1r"},
      {"a stranger on another display does not count", "1oO", below('o'), "1oO"},
      {"a stranger that has just come is let be, one that stays is not", "1osS", below('o', true, '1', {'S'}), "os1S"},
      {"below a dialog, its owner between: not what it should be", "1oc", below('c'), "o1c"},
      {"but good enough where the manager keeps them together", "1oc", sparing(below('c')), "1oc"},
      {"not with a stranger between", "1soc", sparing(below('c')), "so1c"},
      {"windows of an application are no dialogs", "1op", sparing(below('p')), "o1p"},
      {"above all where nothing else helps", "1pso", hollow(below('p')), "pso1"},
      {"below a window already, a dock beneath", "bs1o", below('o'), "bs1o"},
      {"in front, beneath docks", "1opr", front(), "op1r"},
      {"in front from above docks", "opr1", front(), "op1r"},
      {"in front already", "op12r", front(), "op12r"},
      {"in front of nothing", "d1r", front(), "d1r"},
      {"not in the stack", "op", front(), "op"},
  };
  for (const auto& [name, before, wish, after] : cases) {
    SCOPED_TRACE(name);
    auto stack = stackOf(before);
    const auto steps = restacksFor(wish, stack);
    EXPECT_EQ(steps.empty(), std::string(before) == after);
    for (const auto& step : steps) carryOut(step, stack);
    EXPECT_EQ(lettersOf(stack), after);
    EXPECT_TRUE(restacksFor(wish, stack).empty()) << "a place that was just taken is right";
  }
}

TEST(ServerOrderTest, TellsWhatAnOverlayMustLeaveClear) {
  struct Clear {
    const char* name;
    const char* stack;
    PlacementWish wish;
    const char* clear;
  };
  for (const auto& [name, letters, wish, expected] :
       {Clear{"beneath the active window: nothing", "s1o", below('o'), ""},
        Clear{"above strangers: the active window and its dialogs", "posc1", below('o'), "oc"},
        Clear{"a dock that lies beneath it", "bs1o", below('o'), "b"},
        Clear{"the desktop's cover: nothing", "bd1o", aboveDesktop(), ""}}) {
    SCOPED_TRACE(name);
    std::string clear;
    for (const auto window : leftClear(wish, stackOf(letters))) clear += static_cast<char>(window);
    EXPECT_EQ(clear, expected);
  }
}

TEST(ServerOrderTest, TellsAnOverlayThatHidesWindowsItShouldLieBeneath) {
  EXPECT_TRUE(coversWindows(aboveDesktop(), stackOf("do1p")));
  EXPECT_FALSE(coversWindows(aboveDesktop(), stackOf("dbxO1p")));
  EXPECT_FALSE(coversWindows(below('p'), stackOf("o1p")));
}

TEST(ServerOrderTest, OverlaysWithTheSameWishSettleAndStay) {
  for (const auto& wishes : {std::vector{below('p', true, '1'), below('p', true, '2')},
                             std::vector{aboveDesktop('1'), aboveDesktop('2')}, std::vector{front('1'), front('2')}}) {
    auto stack = stackOf("1do2pr");
    for (int round = 0; round < 2; ++round) {
      for (const auto& wish : wishes) {
        const auto steps = restacksFor(wish, stack);
        EXPECT_TRUE(round == 0 || steps.empty());
        for (const auto& step : steps) carryOut(step, stack);
      }
    }
  }
}

}  // namespace
}  // namespace hushpane::x11

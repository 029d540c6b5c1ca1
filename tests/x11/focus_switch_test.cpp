#include "tests/x11/both_ways.h"

namespace hushpane::x11_tests {
namespace {

class FocusSwitch : public BothWays {
 protected:
  FocusSwitch() {
    chooseMode("focus");
    startHushpane();
    EXPECT_TRUE(showsDimExcept({red_->frameBounds()}));
  }
};
HUSHPANE_RUN_BOTH_WAYS(FocusSwitch);

// A window manager that raises while the program restacks: whatever crosses on the way, the end is right.
TEST_P(FocusSwitch, CoverIsRightAfterSwitchesThatOvertakeIt) {
  const auto raise = [this](const Terminal& terminal) { request(terminal.window(), "_NET_ACTIVE_WINDOW", {2}); };
  const std::vector<const Terminal*> terminals{red_.get(), green_.get(), blue_.get()};
  for (int round = 0; round < 4; ++round) {
    for (int number = 0; number < 90; ++number) {
      raise(*terminals[static_cast<std::size_t>(number % 3)]);
      std::this_thread::sleep_for(milliseconds(number % (round + 3)));
    }
    activate(green_->window());
    activate(red_->window());
    ASSERT_TRUE(showsDimExcept({red_->frameBounds()})) << "in round " << round;
  }
}

}  // namespace
}  // namespace hushpane::x11_tests

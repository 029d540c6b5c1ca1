#include "tests/managers/managed_desktop.h"

namespace hushpane::x11_tests {
namespace {

Combination stubborn(const std::string& name, const std::vector<std::string>& habits) {
  std::vector<std::string> command{HUSHPANE_STUBBORN_MANAGER};
  command.insert(command.end(), habits.begin(), habits.end());
  return {.name = name, .windowManager = {.name = name, .command = command}};
}

class StubbornManager : public ManagedDesktop {};
INSTANTIATE_TEST_SUITE_P(WindowManagers, StubbornManager,
                         testing::Values(stubborn("raises-others", {"raises"}), stubborn("ignores-wishes", {"ignores"}),
                                         stubborn("does-both", {"raises", "ignores"})),
                         combinationName);

TEST_P(StubbornManager, NeverGetsTheActiveWindowCovered) {
  start("focus");
  runCase("manager that fights back", [&] {
    for (const Terminal* terminal : {red_.get(), green_.get(), red_.get()}) {
      activate(terminal->window());
      EXPECT_TRUE(seesFront(*terminal));
    }
    picture();
    wait(1s);
    EXPECT_LT(wakeUpsPerSecond(), 60) << "the program and the window manager chase each other";
    click(blue_->spot());
    EXPECT_TRUE(waitUntil([&] { return x().activeWindow() == blue_->window(); }, 2s)) << "a click did not pass";
    EXPECT_TRUE(seesFront(*blue_));
  });
}

}  // namespace
}  // namespace hushpane::x11_tests

#include "tests/managers/managed_desktop.h"

namespace hushpane::x11_tests {
namespace {

Combination stubborn(const std::string& name, const std::vector<std::string>& habits) {
  std::vector<std::string> command{HUSHPANE_STUBBORN_MANAGER};
  command.insert(command.end(), habits.begin(), habits.end());
  return {.name = name, .windowManager = {.name = name, .command = command}};
}

class OrdinaryManager : public ManagedDesktop {};
class CompositingManager : public ManagedDesktop {
 protected:
  CompositingManager() { darkness_ = 1; }
};
class FamilyManager : public CompositingManager {};
class FillingManager : public CompositingManager {};
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

// Somebody else may bring the cover to the front, again and again, and then gives up.
TEST_P(OrdinaryManager, IsUsedAsBeforeAfterTroubleIsOver) {
  start("focus");
  ASSERT_TRUE(seesFront(*red_));
  wait(600ms);  // what has worked for that long is kept
  const auto cover = covers().front();
  for (int number = 0; number < 8; ++number) {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(x().get(), cover, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    x().sync();
    wait(20ms);
  }
  runCase("cover that is raised", [&] {
    EXPECT_TRUE(seesFront(*red_));
    activate(green_->window());
    EXPECT_TRUE(seesFront(*green_));
    EXPECT_EQ(covers().front(), cover) << "it was made anew";
  });
}
INSTANTIATE_TEST_SUITE_P(WindowManagers, OrdinaryManager, testing::Values(Combination{"openbox-storm", openbox()}),
                         combinationName);

TEST_P(CompositingManager, HidesWindowsThatStayMapped) {
  chooseMode("focus", "blur");
  startHushpane();
  runCase("ghosts", [&] {
    const auto ghost = openWindow({{700, 400, 300, 300}, white});
    activate(red_->window());
    const auto looksEmpty = [&] { return isNear(x().pixel(ghost->spot()), x().pixel(leftSpot), 6); };
    EXPECT_TRUE(waitUntil([&] { return x().pixel(ghost->spot()).brightness() > 200; })) << "it is blurred";
    const auto set = [&](xcb_window_t window, const char* name, std::uint32_t value) {
      x().setNumbers(window, name, name == std::string("_NET_WM_STATE") ? "ATOM" : "CARDINAL", {value});
    };
    set(ghost->window(), "_NET_WM_STATE", x().atom("_NET_WM_STATE_HIDDEN"));
    EXPECT_TRUE(waitUntil(looksEmpty)) << "minimised";
    set(ghost->window(), "_NET_WM_STATE", x().atom("_NET_WM_STATE_STICKY"));
    EXPECT_TRUE(waitUntil([&] { return !looksEmpty(); })) << "shown again";
    set(x().root(), "_NET_CURRENT_DESKTOP", 0);
    set(ghost->window(), "_NET_WM_DESKTOP", 1);
    EXPECT_TRUE(waitUntil(looksEmpty)) << "on another workspace";
    set(x().root(), "_NET_CURRENT_DESKTOP", 1);
    EXPECT_TRUE(waitUntil([&] { return !looksEmpty(); })) << "which is shown now";
  });
}
INSTANTIATE_TEST_SUITE_P(WindowManagers, CompositingManager, testing::Values(stubborn("composites", {"composites"})),
                         combinationName);

// How often the cover has changed its place after a while, and whether the front window was ever hidden.
TEST_P(FamilyManager, EndsNoQuarrelWithACoveredWindow) {
  start("focus");
  ASSERT_TRUE(seesFront(*red_));
  runCase("dialog that stays above its owner", [&] {
    const auto owner = openFront({{500, 450, 300, 200}, brown});
    const auto dialog =
        openFront({{550, 500, 150, 120}, white, "_NET_WM_WINDOW_TYPE_DIALOG", false, 255, owner->window()});
    ASSERT_TRUE(sees({spotOf(*dialog)}, {left(), spotOf(*green_)}));
    ScreenWatch watch(display(), {dialog->spot()});
    wait(1500ms);
    int hidden = 0;
    for (const auto& look : watch.stop()) hidden += !isNear(look.pixels[0], white, 3);
    EXPECT_EQ(hidden, 0) << "looks";
    EXPECT_LE(wakeUpsPerSecond(), 30);
    picture();
  });
  runCase("two windows of an application, another's between", [&] {
    const auto behind = openFront({{500, 450, 300, 200}, brown});
    activate(green_->window());
    const auto front = openFront({{700, 600, 200, 300}, white});
    EXPECT_TRUE(sees({spotOf(*front)}, {left(), spotOf(*green_), {{510, 460}, brown}}));
    picture();
    wait(1s);
    EXPECT_TRUE(sees({spotOf(*front)}, {left(), spotOf(*green_)}));
    EXPECT_LE(wakeUpsPerSecond(), 30);
    activate(red_->window());
    EXPECT_TRUE(seesFront(*red_));
  });
}
INSTANTIATE_TEST_SUITE_P(WindowManagers, FamilyManager,
                         testing::Values(stubborn("keeps-families", {"composites", "families"})), combinationName);

TEST_P(FillingManager, GetsNoCoverOfFullScreen) {
  start("focus");
  runCase("no cover is of full screen", [&] {
    EXPECT_TRUE(seesFront(*red_));
    const auto isOfFullScreen = [this](xcb_window_t cover) {
      const auto states = x().numbers(cover, "_NET_WM_STATE");
      return std::find(states.begin(), states.end(), x().atom("_NET_WM_STATE_FULLSCREEN")) != states.end();
    };
    for (const xcb_window_t cover : covers()) EXPECT_TRUE(waitUntil([&] { return !isOfFullScreen(cover); }));
  });
}
INSTANTIATE_TEST_SUITE_P(WindowManagers, FillingManager,
                         testing::Values(stubborn("fills-the-screen", {"composites", "fills"})), combinationName);

}  // namespace
}  // namespace hushpane::x11_tests

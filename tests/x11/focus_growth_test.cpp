#include "tests/x11/desktop.h"

namespace hushpane::x11_tests {
namespace {

// A window of the right monitor that grows while the focus cover shows.
class FocusGrowth : public Desktop {
 protected:
  FocusGrowth() {
    chooseMode("focus");
    startHushpane();
    EXPECT_TRUE(shows(rightSpot, dimmed(background, balanced)));
  }

  // Opens the window, changes it, waits, and tells for how long each monitor was free of its cover.
  struct FreeTimes {
    milliseconds left{}, right{};
  };
  template <class Change>
  FreeTimes timesFreeOfCover(Rect start, Change change) {
    const auto window = openWindow({start, {0xf0f0f0}});
    activate(window->window());
    std::this_thread::sleep_for(400ms);  // several ticks, so that the tracking knows the size
    EXPECT_TRUE(shows(rightSpot, dimmed(background, balanced)));
    ScreenWatch watch(display(), {leftSpot, rightSpot});
    change(*window);
    std::this_thread::sleep_for(1s);  // the ticks that follow
    EXPECT_TRUE(shows(rightSpot, dimmed(background, balanced)));
    const auto looks = watch.stop();
    const auto freeTime = [&](std::size_t spot) {
      Clock::duration time{};
      for (std::size_t index = 1; index < looks.size(); ++index) {
        if (isNear(looks[index].pixels[spot], background)) time += looks[index].time - looks[index - 1].time;
      }
      return std::chrono::duration_cast<milliseconds>(time);
    };
    return {freeTime(0), freeTime(1)};
  }

  static Rect sized(double width, double height) { return {1150, 50, width, height}; }
};

TEST_F(FocusGrowth, ZoomFreesTheMonitorUntilTheSizeSettles) {
  const auto free = timesFreeOfCover(sized(200, 200), [](ClientWindow& window) { window.setBounds(sized(700, 600)); });
  EXPECT_GT(free.right, 50ms);
  EXPECT_LT(free.right, 500ms);
  EXPECT_EQ(free.left, 0ms);
}

TEST_F(FocusGrowth, MonitorStaysFreeWhileTheWindowKeepsGrowing) {
  constexpr auto growing = 800ms;
  const auto free = timesFreeOfCover(sized(200, 200), [&](ClientWindow& window) {
    const auto begin = Clock::now();
    while (Clock::now() - begin < growing) {
      // 350 points at once, then some 300 points a second: above 5 % of the area in every tick
      const double passed = std::chrono::duration<double>(Clock::now() - begin).count();
      window.setBounds(sized(350 + 300 * passed, 350 + 300 * passed));
      std::this_thread::sleep_for(10ms);
    }
  });
  EXPECT_GT(free.right, growing - 250ms);
  EXPECT_EQ(free.left, 0ms);
}

TEST_F(FocusGrowth, SlowGrowthAndGrowthFromNothingFreeNothing) {
  struct Case {
    const char* what;
    Rect before, after;
  };
  for (const Case& now :
       {Case{"by 35 %", sized(400, 400), sized(540, 400)}, Case{"smaller", sized(600, 600), sized(200, 200)},
        Case{"from a size that is not tracked", sized(90, 90), sized(700, 600)}}) {
    SCOPED_TRACE(now.what);
    const auto free = timesFreeOfCover(now.before, [&](ClientWindow& window) { window.setBounds(now.after); });
    EXPECT_EQ(free.right, 0ms);
    EXPECT_EQ(free.left, 0ms);
  }
}

}  // namespace
}  // namespace hushpane::x11_tests

#include "tests/whole_desktops/whole_desktop.h"

namespace hushpane::x11_tests {
namespace {

class FocusIn : public WholeDesktop {
 protected:
  void switchesBy(const std::function<void(const Application&)>& bringForward);
  void comesForward(const Application& next) const {
    EXPECT_TRUE(waitUntil([&] { return x().activeWindow() == next.window(); }, 5s)) << next.name() << " stays back";
    EXPECT_TRUE(seesClear({&next}));
  }
  // Whether the dimmed desktop, and nothing else, is around the windows.
  testing::AssertionResult isBare(const std::vector<const Application*>& among) const {
    return showsDesktop(dimmed(DesktopSession::upperColor, balanced), dimmed(DesktopSession::lowerColor, balanced),
                        among);
  }
  void drags(const Application& window);
  void fullScreen(const Application& window);
  void largeWindow(const Application& window);
  void taskBar();
  void leftWindows(const std::function<void()>& leave, const std::function<void()>& comeBack);
};
HUSHPANE_RUN_IN_ALL_DESKTOPS(FocusIn);

void FocusIn::switchesBy(const std::function<void(const Application&)>& bringForward) {
  const Applications& open = applications();
  for (const Application* next : {&open.gtkEditor, &open.qtEditor, &open.files, &open.terminal}) {
    bringForward(*next);
    comesForward(*next);
  }
}

// Task bars tell where they show a window.
void FocusIn::taskBar() {
  switchesBy([this](const Application& next) {
    std::vector<std::uint32_t> place;
    if (!waitUntil([&] { return (place = x().numbers(next.window(), "_NET_WM_ICON_GEOMETRY")).size() == 4; }, 3s))
      throw std::runtime_error("no task bar shows " + next.name());
    session().clickSlowly({place[0] + place[2] / 2.0, place[1] + place[3] / 2.0});
  });
  session().runTool({"xdotool", "mousemove", "800", "480"});
}

void FocusIn::drags(const Application& window) {
  const Rect before = window.bounds();
  const Point grip = window.title();
  const auto move = [&](double by) {
    session().runTool({"xdotool", "mousemove", std::to_string(int(grip.x - by)), std::to_string(int(grip.y + by))});
  };
  move(0);
  session().runTool({"xdotool", "mousedown", "1"});
  for (int step = 1; step <= 8; ++step) move(step * 10);
  EXPECT_TRUE(waitUntil([&] { return window.bounds().x < before.x - 40; }, 3s)) << "it does not move";
  const Pixel color = untouched().at(int(center(before).x), int(center(before).y));
  EXPECT_TRUE(shows(center(window.inside()), color, 2s)) << "while it is dragged";
  picture();
  session().runTool({"xdotool", "mouseup", "1"});
  EXPECT_TRUE(shows(center(window.inside()), color, 2s)) << "after it was dragged";
  EXPECT_TRUE(isBare(applications().all()));
  session().runTool({"xdotool", "mousemove", "800", "480"});
  window.place(before);
  EXPECT_TRUE(seesClear({&window}));
}

void FocusIn::fullScreen(const Application& window) {
  const Rect before = window.bounds();
  const Pixel color = untouched().at(int(center(before).x), int(center(before).y));
  session().setState(window.window(), true, "FULLSCREEN");
  ASSERT_TRUE(waitUntil([&] { return window.bounds().height > 950; }, 5s)) << "it does not fill the screen";
  wait(500ms);
  for (const Point spot : DesktopSession::bareSpots) {
    if (window.bounds().contains(spot)) {
      EXPECT_TRUE(shows(spot, color, 2s));
    }
  }
  picture();
  session().setState(window.window(), false, "FULLSCREEN");
  EXPECT_TRUE(waitUntil([&] { return window.bounds().height < 700; }, 5s));
  window.place(before);
  EXPECT_TRUE(seesClear({&window}));
}

// With its shadow it has more of the display than what counts as filling it.
void FocusIn::largeWindow(const Application& window) {
  activate(window);
  const Rect before = window.bounds();
  const double width = session().monitors() == 2 ? DesktopSession::leftWidth : DesktopSession::screen.width;
  window.place({25, 45, width - 50, 915});
  ASSERT_TRUE(waitUntil([&] { return window.bounds().width > width - 120; }, 3s));
  wait(1s);
  picture();
  const auto all = covers();
  const int shown = int(std::count_if(all.begin(), all.end(), [](auto cover) { return x().isOnScreen(cover); }));
  EXPECT_EQ(shown, session().monitors()) << "displays are covered";
  window.place(before);
  activate(applications().terminal);
  EXPECT_TRUE(seesClear({&applications().terminal}));
}

void FocusIn::leftWindows(const std::function<void()>& leave, const std::function<void()>& comeBack) {
  leave();
  EXPECT_TRUE(isBare({}));
  EXPECT_TRUE(barsAreClear());
  picture();
  comeBack();
  for (const Application* application : applications().all()) activate(*application);
  activate(applications().terminal);
  EXPECT_TRUE(seesClear({&applications().terminal}));
}

TEST_P(FocusIn, EveryDesktop) {
  start();
  use("focus");
  const Application& terminal = applications().terminal;
  runCase("focus", [&] {
    EXPECT_TRUE(seesClear({&terminal}));
    EXPECT_TRUE(barsAreClear());
    for (const xcb_window_t cover : covers()) {
      const auto states = x().numbers(cover, "_NET_WM_STATE");
      EXPECT_EQ(std::count(states.begin(), states.end(), x().atom("_NET_WM_STATE_FULLSCREEN")), 0)
          << "the cover counts as a full-screen window";
    }
  });
  runCase("switch by click", [this] {
    switchesBy([this](const Application& next) { session().clickSlowly(next.title()); });
    session().runTool({"xdotool", "mousemove", "800", "480"});
  });
  runCase("switch by request", [this] { switchesBy([this](const Application& next) { activate(next); }); });
  runCase("switch by keys", [&] {
    activate(applications().gtkEditor);
    keys("alt+Tab");
    comesForward(terminal);
  });
  runCase("switch by task bar", [this] { taskBar(); });
  runCase("drag", [&] { drags(terminal); });
  runCase("full screen", [&] { fullScreen(terminal); });
  runCase("large window", [this] { largeWindow(applications().gtkEditor); });
  runCase("click on the desktop", [&] {
    session().clickSlowly({810, 720});
    EXPECT_TRUE(waitUntil([&] { return x().activeWindow() != terminal.window(); }, 3s));
    wait(500ms);
    for (const Application* other : {&applications().files, &applications().gtkEditor, &applications().qtEditor})
      EXPECT_TRUE(looks(other->inside(), balanced, other->name()));
    picture();
    activate(terminal);
    EXPECT_TRUE(seesClear({&terminal}));
  });
  runCase("focus, minimised windows", [this] {
    leftWindows(
        [this] {
          for (const auto* one : applications().all()) session().minimise(one->window());
        },
        [] {});
  });
  runCase("focus, second workspace",
          [this] { leftWindows([] { session().toWorkspace(1); }, [] { session().toWorkspace(0); }); });
  runCase("focus, show desktop",
          [this] { leftWindows([] { session().showDesktop(true); }, [] { session().showDesktop(false); }); });
  runCase("reveal", [&] {
    session().keyboard("keydown", "alt");
    for (const Application* application : applications().all())
      EXPECT_TRUE(looks(application->inside(), 0, application->name()));
    EXPECT_TRUE(
        waitUntil([] { return session().showsPicture(DesktopSession::upperColor, DesktopSession::lowerColor); }, 3s));
    picture();
    session().keyboard("keyup", "alt");
    EXPECT_TRUE(seesClear({&terminal}));
  });
}

}  // namespace
}  // namespace hushpane::x11_tests

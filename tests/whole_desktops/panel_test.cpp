#include "tests/whole_desktops/cover_moves.h"
#include "tests/whole_desktops/whole_desktop.h"
#include "tests/x11/tray.h"

namespace hushpane::x11_tests {
namespace {

class PanelIn : public WholeDesktop {
 protected:
  // Where on a bar the icon is, by what it shows in another mode.
  std::optional<Rect> findIcon();
  std::vector<Picture> barsIn(const std::string& mode);
  void iconStandsOut();
  void opensBesideIcon();
  // Whether an open panel lies beside that place, on the screen, and on no bar.
  void isBeside(const Rect& panel, const Rect& icon);
  void isOnNoBar(const Rect& panel);
  void secondStart();
  void key(const std::string& names, const std::string& mode);
  void bubble();
  void dark();
  testing::AssertionResult hasPanels(std::size_t count) const {
    if (waitUntil([&] { return panels().size() == count; }, 3s)) return testing::AssertionSuccess();
    return testing::AssertionFailure() << panels().size() << " panels instead of " << count;
  }

  std::optional<Rect> icon_;
};
HUSHPANE_RUN_IN_ALL_DESKTOPS(PanelIn);

// What the bars show in a mode, once they keep still.
std::vector<Picture> PanelIn::barsIn(const std::string& mode) {
  toMode(mode);
  std::vector<Picture> last, now;
  const auto isStill = [&] {
    wait(400ms);
    last = std::exchange(now, {});
    for (const Rect& bar : session().bars()) now.push_back(x().capture(bar));
    return now == last;
  };
  waitUntil(isStill, 4s);
  return now;
}

std::optional<Rect> PanelIn::findIcon() {
  if (const auto frame = Tray::iconFrame(x())) return frame;
  constexpr double smallest = 2, largest = 64;
  constexpr int clearly = 30;
  const auto standard = barsIn("standard"), focus = barsIn("focus"), again = barsIn("standard");
  for (std::size_t index = 0; index < standard.size(); ++index) {
    std::vector<Point> icon = changed(standard[index], focus[index]);
    std::erase_if(icon, [&](Point at) {  // a clock goes on meanwhile
      return !isNear(standard[index].at(int(at.x), int(at.y)), again[index].at(int(at.x), int(at.y)), clearly);
    });
    const Rect area = boundsOf(icon), bar = session().bars()[index];
    if (area.width >= smallest && area.width < largest)
      return Rect{bar.x + area.x, bar.y + area.y, area.width, area.height};
  }
  return std::nullopt;
}

void PanelIn::iconStandsOut() {
  icon_ = findIcon();
  ASSERT_TRUE(icon_) << "no part of a bar shows the mode clearly";
  const Picture shown = x().capture({icon_->x - 2, icon_->y - 2, icon_->width + 4, icon_->height + 4});
  int darkest = 765, lightest = 0;
  for (const std::uint32_t value : shown.pixels) {
    darkest = std::min(darkest, Pixel{value}.brightness());
    lightest = std::max(lightest, Pixel{value}.brightness());
  }
  EXPECT_GT(lightest - darkest, 3 * 70) << "it does not stand out";
}

// What people see of it, without its shadow.
static Rect withoutShadow(const Rect& panel) {
  constexpr double shadow = 36;
  return {panel.x + shadow, panel.y + shadow, panel.width - 2 * shadow, panel.height - 2 * shadow};
}

void PanelIn::isBeside(const Rect& panel, const Rect& icon) {
  const Rect seen = withoutShadow(panel);
  EXPECT_LT(std::abs(center(panel).x - center(icon).x), panel.width) << "far from the icon";
  const double gap = std::min(std::abs(seen.y - icon.bottom()), std::abs(icon.y - seen.bottom()));
  EXPECT_LT(gap, 90) << "far from the icon";
}

void PanelIn::isOnNoBar(const Rect& panel) {
  for (const Rect& bar : session().bars())
    EXPECT_LE(withoutShadow(panel).intersection(bar).area(), 0)
        << "it lies on the bar at " << panel.x << ',' << panel.y;
}

void PanelIn::opensBesideIcon() {
  ASSERT_TRUE(icon_) << "no icon to click";
  session().clickSlowly(center(*icon_));
  ASSERT_TRUE(hasPanels(1));
  wait(500ms);
  isBeside(panels().front(), *icon_);
  isOnNoBar(panels().front());
  picture();
  session().clickSlowly(center(*icon_));
  EXPECT_TRUE(hasPanels(0)) << "after another click on the icon";
  keys("Escape");
  session().runTool({"xdotool", "mousemove", "800", "480"});
}

void PanelIn::secondStart() {
  runHushpane({});
  ASSERT_TRUE(hasPanels(1));
  wait(500ms);
  const Rect panel = panels().front();
  EXPECT_GE(panel.x, -60);
  EXPECT_GE(panel.y, -60);
  EXPECT_LE(panel.right(), DesktopSession::screen.width + 60);
  isOnNoBar(panel);
  picture();
  keys("Escape");
  EXPECT_TRUE(hasPanels(0));
}

void PanelIn::key(const std::string& names, const std::string& mode) {
  activate(applications().terminal);
  keys(names);
  EXPECT_TRUE(waitUntil([&] { return session().sharedFile().value("hushpane.userMode") == mode; }, 2s)) << names;
  // What came instead goes.
  const xcb_window_t active = x().activeWindow();
  if (active != applications().terminal.window()) session().request(active, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, 2});
}

// The bubble of the first launch.
void PanelIn::bubble() {
  stopHushpane();
  chooseMode("standard", "dim", {{"hasSeenWelcome", xml(false)}});
  startHushpane();
  Rect found;
  const auto isThere = [&] {
    for (const xcb_window_t window : windowsFrom(100, 40))
      if (x().isOnScreen(window) && x().bounds(window).width < 600) return found = x().bounds(window), true;
    return false;
  };
  EXPECT_TRUE(waitUntil(isThere, 5s)) << "no bubble";
  wait(500ms);
  picture();
  if (icon_ && found.width > 0) isBeside(found, *icon_);
  keys("Escape");
  stopHushpane();
  chooseMode("standard");
  startHushpane();
}

void PanelIn::dark() {
  ASSERT_NE(session().kind().theme, "") << "no theme that all programs follow";
  session().shell(session().kind().theme, "-dark");
  wait(1500ms);
  runHushpane({});
  ASSERT_TRUE(hasPanels(1));
  wait(700ms);
  const Rect panel = panels().front();
  const Rect middle{panel.x + panel.width / 4, panel.y + panel.height / 4, panel.width / 2, panel.height / 2};
  EXPECT_LT(meanBrightness(x().capture(middle)), 128) << "the panel is light";
  picture();
  keys("Escape");
  EXPECT_TRUE(hasPanels(0));
}

TEST_P(PanelIn, EveryDesktop) {
  start();
  runCase("icon", [this] { iconStandsOut(); });
  runCase("panel by its icon", [this] { opensBesideIcon(); });
  runCase("panel by a second start", [this] { secondStart(); });
  runCase("clean desktop and standard by their keys", [this] {
    key("ctrl+alt+a", "cleanDesktop");
    key("ctrl+alt+s", "standard");
  });
  runCase("focus by its keys", [this] {
    key("ctrl+alt+f", "focus");
    picture();
    toMode("standard");
  });
  runCase("idle", [this] {
    toMode("focus");
    EXPECT_TRUE(seesClear({&applications().terminal}));
    settledPicture();
    wait(500ms);
    EXPECT_LE(wakeUpsPerSecond(), 30);
    const CoverMoves moves(session(), covers());
    const double before = moves.managerSeconds();
    wait(2s);
    EXPECT_EQ(moves.count(), 0) << "moves of the cover";
    EXPECT_LT(moves.managerSeconds() - before, 0.3) << "of two seconds the window manager was busy";
    toMode("standard");
  });
  runCase("first launch", [this] { bubble(); });
  runCase("quit leaves nothing", [this] {
    toMode("focus");
    EXPECT_TRUE(seesClear({&applications().terminal}));
    const pid_t pid = hushpanePid();
    stopHushpane();
    for (const Application* application : applications().all())
      EXPECT_TRUE(looks(application->inside(), 0, application->name()));
    EXPECT_TRUE(
        waitUntil([] { return session().showsPicture(DesktopSession::upperColor, DesktopSession::lowerColor); }, 3s));
    for (const xcb_window_t window : x().stacking()) EXPECT_NE(x().processOf(window), pid) << "a window is left";
    picture();
    chooseMode("standard");
    startHushpane();
  });
  runCase("dark theme", [this] { dark(); });
  runCase("icon, dark theme", [this] {
    ASSERT_NE(session().kind().theme, "");
    iconStandsOut();
  });
  session().shell(session().kind().theme);
  wait(2s);  // until all have taken it over
}

}  // namespace
}  // namespace hushpane::x11_tests

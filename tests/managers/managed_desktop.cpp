#include "tests/managers/managed_desktop.h"

#include <xcb/damage.h>

#include <algorithm>

#include "tests/managers/impossible.h"
#include "tests/x11/judge_case.h"
#include "tests/x11/root_picture.h"

namespace hushpane::x11_tests {

ManagedDesktop::ManagedDesktop() : Desktop(GetParam().windowManager) {
  setRootPicture(display(), 0, background, background);
  if (combination().runsPicom) startCompositor();
  if (combination().needsDesktopWindow) {
    desktopWindow_ = openWindow({{0, 0, 1920, 1080}, background, "_NET_WM_WINDOW_TYPE_DESKTOP"});
    EXPECT_TRUE(shows(leftSpot, background));
    activate(red_->window());
  }
  if (combination().isComposited) drawOnce();
}

void ManagedDesktop::drawOnce() const {
  {
    const auto sheet = openWindow({{0, 0, 1920, 1080}, brown, "_NET_WM_WINDOW_TYPE_TOOLTIP", true});
    waitUntil([&] { return isNear(x().pixel(rightSpot), brown); }, 2s);
  }
  waitUntil([&] { return !isNear(x().pixel(rightSpot), brown) && !isNear(x().pixel(leftSpot), brown); }, 2s);
}

void ManagedDesktop::TearDown() {
  EXPECT_TRUE(hushpane().isRunning()) << hushpane().errors();
  EXPECT_EQ(hushpane().errors(), "");
  runCase("never active nor in a taskbar", [this] { EXPECT_TRUE(coversStayInTheBackground()); });
}

// --- cases ---

void ManagedDesktop::runCase(const std::string& name, const std::function<void()>& body) {
  caseName_ = name;
  const auto impossible = whyImpossible(combination().name, name);
  limit_ = impossible ? 500ms : 4000ms;
  if (judgeCase(name, impossible, body)) return;
  shot(combination().name + "/" + name + (impossible ? " (impossible)" : " (failed)"));
  restore();
}

// After a failure the next case begins as if nothing had happened, as far as that is possible.
void ManagedDesktop::restore() {
  try {
    keyboard("keyup", "alt");
    // It may have to see many windows out first.
    waitUntil([&] { return x().numbers(x().root(), "_NET_CLIENT_LIST").size() < 100; }, 60s);
    toWorkspace(0);
    if (x().numbers(x().root(), "_NET_SHOWING_DESKTOP") == std::vector<std::uint32_t>{1}) showDesktop(false);
    activate(red_->window());
    stopHushpane();
    wait(500ms);  // some compositors let windows fade
    startHushpane();
  } catch (const std::exception& failure) {
    ADD_FAILURE() << "the session is beyond repair: " << failure.what();
  }
}

// --- what happens ---

void ManagedDesktop::start(const std::string& mode, SettingsValues more) {
  chooseMode(mode, "dim", std::move(more));
  startHushpane();
}

void ManagedDesktop::toWorkspace(int number) const {
  auto command = combination().windowManager.toWorkspace;
  if (command.empty()) return request(x().root(), "_NET_CURRENT_DESKTOP", {std::uint32_t(number), XCB_CURRENT_TIME});
  command.push_back(number == 0 ? "1" : "3");
  runTool(command);
}

std::unique_ptr<ClientWindow> ManagedDesktop::openFront(const ClientWindow::Look& look) const {
  auto window = openWindow(look);
  activate(window->window());
  return window;
}

// --- what people see ---

testing::AssertionResult ManagedDesktop::sees(const std::vector<Spot>& clear, const std::vector<Spot>& covered) const {
  std::ostringstream wrong;
  const auto check = [&](const Spot& spot, Pixel expected) {
    const Pixel seen = x().pixel(spot.point);
    if (!isNear(seen, expected, spot.tolerance))
      wrong << seen << " instead of " << expected << " at " << spot.point.x << ',' << spot.point.y << "  ";
  };
  const auto look = [&] {
    wrong.str("");
    for (const Spot& spot : clear) check(spot, spot.color);
    for (const Spot& spot : covered) check(spot, dimmed(spot.color, darkness_));
    return wrong.str().empty();
  };
  if (waitUntil(look, limit_)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << wrong.str();
}

testing::AssertionResult ManagedDesktop::seesFront(const Terminal& front) const {
  std::vector<Spot> covered{left(), right()};
  for (const Terminal* terminal : terminals())
    if (terminal != &front) covered.push_back(spotOf(*terminal));
  return sees({spotOf(front)}, covered);
}

std::vector<Rect> ManagedDesktop::framesAndShadows() const {
  constexpr double margin = 64;
  std::vector<Rect> areas;
  for (const Terminal* terminal : terminals()) {
    const Rect bounds = terminal->bounds();
    areas.push_back({bounds.x - margin, bounds.y - margin, bounds.width + 2 * margin, bounds.height + 2 * margin});
  }
  return areas;
}

testing::AssertionResult ManagedDesktop::isCoveredBut(const std::vector<const Terminal*>& clear) const {
  std::vector<Spot> free, covered;
  for (const Terminal* terminal : terminals())
    (std::find(clear.begin(), clear.end(), terminal) == clear.end() ? covered : free).push_back(spotOf(*terminal));
  covered.insert(covered.end(), {left(), right()});
  if (const auto seen = sees(free, covered); !seen) return seen;
  const Picture picture = x().capture();
  const std::vector<Rect> frames = framesAndShadows();
  for (int row = 1; row < picture.height; row += 7) {
    for (int column = 1; column < picture.width; column += 7) {
      const Point point{double(column), double(row)};
      if (std::any_of(frames.begin(), frames.end(), [&](const Rect& area) { return area.contains(point); })) continue;
      if (!isNear(picture.at(column, row), dimmed(untouched().at(column, row), balanced), 3))
        return testing::AssertionFailure() << picture.at(column, row) << " at " << column << ',' << row;
    }
  }
  return testing::AssertionSuccess();
}

// --- the program's windows ---

std::vector<xcb_window_t> ManagedDesktop::covers() const {
  return windowsFrom(rightMonitor.width, rightMonitor.height);
}

testing::AssertionResult ManagedDesktop::coversStayInTheBackground() const {
  std::vector<xcb_window_t> all;
  if (!waitUntil([&] { return !(all = covers()).empty(); }, 2s))
    return testing::AssertionFailure() << "there is no cover";
  const auto listed = x().numbers(x().root(), "_NET_CLIENT_LIST");
  const auto focus = own(xcb_get_input_focus_reply(x().get(), xcb_get_input_focus(x().get()), nullptr));
  for (const xcb_window_t cover : all) {
    if (x().activeWindow() == cover || focus->focus == cover) return testing::AssertionFailure() << "a cover is active";
    if (std::find(listed.begin(), listed.end(), cover) == listed.end()) continue;
    const auto states = x().numbers(cover, "_NET_WM_STATE");
    for (const char* state : {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"})
      if (std::find(states.begin(), states.end(), x().atom(state)) == states.end())
        return testing::AssertionFailure() << "a cover is listed without " << state;
  }
  return testing::AssertionSuccess();
}

int ManagedDesktop::redrawsPerSecond() const {
  const XConnection watcher(display());
  own(xcb_damage_query_version_reply(watcher.get(), xcb_damage_query_version(watcher.get(), 1, 1), nullptr));
  for (const xcb_window_t cover : covers())
    xcb_damage_create(watcher.get(), xcb_generate_id(watcher.get()), cover, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
  watcher.sync();
  while (own(xcb_poll_for_event(watcher.get()))) continue;  // all that was damaged before
  wait(1s);
  int count = 0;
  while (own(xcb_poll_for_event(watcher.get()))) ++count;
  return count;
}

}  // namespace hushpane::x11_tests

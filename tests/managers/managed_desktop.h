#pragma once

#include <algorithm>

#include "tests/managers/combinations.h"
#include "tests/x11/desktop.h"

namespace hushpane::x11_tests {

// A desktop whose tests run under every window manager, with and without a compositor. A test is a few cases, one after
// the other in one session; each begins with the red terminal active.
class ManagedDesktop : public Desktop, public testing::WithParamInterface<Combination> {
 protected:
  // A place on the screen and what it shows without a cover.
  struct Spot {
    Point point;
    Pixel color;
    int tolerance = 3;
  };
  static constexpr Pixel white{0xf0f0f0}, brown{0x906030};

  ManagedDesktop();
  void TearDown() override;

  const Combination& combination() const { return GetParam(); }
  // How dark the cover is to be; black where nobody blends what says that it is transparent.
  double darkness_ = balanced;
  // Runs a case and records how it went. One that the window manager makes impossible must fail.
  void runCase(const std::string& name, const std::function<void()>& body);
  // The picture of the running case.
  void picture() const { shot(combination().name + "/" + caseName_); }

  // --- what happens ---
  void start(const std::string& mode, SettingsValues more = {});
  void toWorkspace(int number) const;  // 0 or 1
  // Has a compositor draw the whole screen; some draw the desktop only where something was.
  void drawOnce() const;
  // A window of this application, in front.
  std::unique_ptr<ClientWindow> openFront(const ClientWindow::Look& look) const;
  void wait(milliseconds time) const { std::this_thread::sleep_for(time); }

  // --- what people see ---
  static Spot spotOf(const Terminal& terminal) { return {terminal.spot(), terminal.color()}; }
  static Spot spotOf(const ClientWindow& window) { return {window.spot(), window.color()}; }
  Spot left() const { return {leftSpot, untouched().at(int(leftSpot.x), int(leftSpot.y))}; }
  Spot right() const { return {rightSpot, untouched().at(int(rightSpot.x), int(rightSpot.y))}; }
  // The desktop where a terminal stands; some window managers paint it with a gradient.
  Spot bareBeneath(const Terminal& terminal) const { return {terminal.spot(), left().color, 8}; }
  std::vector<Terminal*> terminals() const { return {red_.get(), green_.get(), blue_.get()}; }
  // Whether the screen comes to show these without a cover and those beneath it.
  testing::AssertionResult sees(const std::vector<Spot>& clear, const std::vector<Spot>& covered) const;
  // The same with one terminal in front.
  testing::AssertionResult seesFront(const Terminal& front) const;
  // Whether the whole screen is covered but for these windows, apart from the frames and shadows of any window.
  testing::AssertionResult isCoveredBut(const std::vector<const Terminal*>& clear) const;

  // The program's windows that are as large as a monitor.
  std::vector<xcb_window_t> covers() const;
  testing::AssertionResult coversStayInTheBackground() const;
  // How often the covers are drawn anew while nothing happens.
  int redrawsPerSecond() const;

 private:
  std::vector<Rect> framesAndShadows() const;
  void restore();

  std::string caseName_;
  milliseconds limit_ = patience;
  std::unique_ptr<ClientWindow> desktopWindow_;
};

inline std::string combinationName(const testing::TestParamInfo<Combination>& combination) {
  std::string name = combination.param.name;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

#define HUSHPANE_RUN_UNDER_ALL_WINDOW_MANAGERS(suite) \
  INSTANTIATE_TEST_SUITE_P(WindowManagers, suite, testing::ValuesIn(combinations()), combinationName)

}  // namespace hushpane::x11_tests

#pragma once

#include "tests/whole_desktops/application.h"
#include "tests/x11/hushpane_run.h"
#include "tests/x11/screenshot.h"

namespace hushpane::x11_tests {

// A test of a few cases in a desktop that has been running since the first test of its process, with the same programs
// side by side in it. Each case begins with the terminal active and nothing open.
class WholeDesktop : public testing::TestWithParam<DesktopWay>, protected HushpaneRun {
 protected:
  WholeDesktop();
  void TearDown() override;

  static DesktopSession& session() { return DesktopSession::running(GetParam()); }
  static const XConnection& x() { return session().x(); }
  static Applications& applications() { return Applications::running(session()); }

  // Runs a case and records how it went. One that the desktop makes impossible must fail.
  void runCase(const std::string& name, const std::function<void()>& body);
  // The picture of the running case.
  void picture() const { hasPicture_ = true, shot(GetParam().name + "/" + caseName_); }

  // --- what happens ---
  // Starts the program in standard mode, so that the screen as it was is known.
  void start(SettingsValues more = {});
  void use(const std::string& mode, const std::string& surface = "dim", SettingsValues more = {});
  void toMode(const std::string& mode);
  void activate(const Application& application) const { session().activate(application.window()); }
  void keys(const std::string& names) const { session().keyboard("key", names); }
  void wait(milliseconds time) const { std::this_thread::sleep_for(time); }

  // --- what people see ---
  // How much of the area looks as it was before the start beneath black of that alpha, from 0 to 1.
  double shareLike(const Rect& area, double alpha, int tolerance = 12) const;
  testing::AssertionResult looks(const Rect& area, double alpha, const std::string& what, int tolerance = 12) const;
  // Whether these applications come to be clear, and the others and the bare desktop covered.
  testing::AssertionResult seesClear(const std::vector<const Application*>& clear) const;
  // Whether the desktop comes to show these colours, wherever neither these windows nor bars nor icons are.
  testing::AssertionResult showsDesktop(Pixel upper, Pixel lower, const std::vector<const Application*>& among) const;
  // The colour of the desktop picture beneath the blur.
  static Pixel tinted(Pixel pixel);
  static double meanBrightness(const Picture& picture);
  testing::AssertionResult barsAreClear() const;
  // Whether what comes with `open` lies above the covers: it looks the same when they go.
  void staysClear(const std::function<void()>& open, const std::function<void()>& close, int fewestPixels = 2000);
  // Whether most of these places are not dimmed.
  static testing::AssertionResult isClearIn(const Picture& seen, const Picture& bare, const std::vector<Point>& places);
  static std::vector<Point> pointsOf(const Rect& area);
  // Places of the screen where these differ clearly.
  static std::vector<Point> changed(const Picture& before, const Picture& after);
  static Rect around(Point spot) { return {spot.x - 15, spot.y - 15, 30, 30}; }
  static Rect boundsOf(const std::vector<Point>& points);

  // --- the program's windows ---
  std::vector<xcb_window_t> covers() const { return windowsFrom(650, 950); }
  std::vector<Rect> panels() const;

 private:
  void restore();
  // Of the first thing that is wrong in the running case.
  void failurePicture() const;

  std::string caseName_;
  mutable bool hasPicture_ = false, hasFailurePicture_ = false;
  milliseconds limit_ = 5s;
};

inline std::string wayName(const testing::TestParamInfo<DesktopWay>& way) {
  std::string name = way.param.name;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

#define HUSHPANE_RUN_IN_ALL_DESKTOPS(suite) \
  INSTANTIATE_TEST_SUITE_P(Desktops, suite, testing::ValuesIn(desktopWays()), wayName)

}  // namespace hushpane::x11_tests

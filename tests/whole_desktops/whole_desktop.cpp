#include "tests/whole_desktops/whole_desktop.h"

#include <algorithm>

#include "desktops/shared/look.h"
#include "tests/whole_desktops/impossible.h"
#include "tests/x11/judge_case.h"

namespace hushpane::x11_tests {
namespace {

Rect grown(const Rect& rect, double margin) {
  return {rect.x - margin, rect.y - margin, rect.width + 2 * margin, rect.height + 2 * margin};
}

bool isIn(const std::vector<Rect>& areas, Point point) {
  return std::any_of(areas.begin(), areas.end(), [&](const Rect& area) { return area.contains(point); });
}

int distance(Pixel a, Pixel b) {
  return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
}

}  // namespace

WholeDesktop::WholeDesktop() : HushpaneRun(session()) {
  applications();
}

void WholeDesktop::TearDown() {
  runCase("runs on without complaint", [this] {
    EXPECT_TRUE(hushpane().isRunning());
    EXPECT_EQ(hushpane().errors(), "");
  });
}

// --- cases ---

void WholeDesktop::runCase(const std::string& name, const std::function<void()>& body) {
  caseName_ = name;
  hasPicture_ = hasFailurePicture_ = false;
  const auto impossible = whyImpossibleIn(GetParam().name, name);
  limit_ = impossible ? 1s : 5s;
  const bool works = judgeCase(name, impossible, [&] {
    body();
    if (!hasPicture_) picture();
  });
  if (works) return;
  failurePicture();
  restore();
}

void WholeDesktop::failurePicture() const {
  if (!std::exchange(hasFailurePicture_, true)) shot(GetParam().name + "/" + caseName_ + " (failed)");
}

// After a failure the next case begins as if nothing had happened, as far as that is possible.
void WholeDesktop::restore() {
  try {
    for (const char* key : {"alt", "ctrl", "super"}) session().keyboard("keyup", key);
    keys("Escape");
    session().request(x().root(), "_NET_CURRENT_DESKTOP", {0, XCB_CURRENT_TIME});
    if (x().numbers(x().root(), "_NET_SHOWING_DESKTOP") == std::vector<std::uint32_t>{1}) session().showDesktop(false);
    for (const Application* application : applications().all()) activate(*application);
    activate(applications().terminal);
    stopHushpane();
    waitUntil([] { return session().showsPicture(DesktopSession::upperColor, DesktopSession::lowerColor); });
    startHushpane();
  } catch (const std::exception& failure) {
    ADD_FAILURE() << "the desktop is beyond repair: " << failure.what();
  }
}

// --- what happens ---

void WholeDesktop::start(SettingsValues more) {
  activate(applications().terminal);
  session().runTool({"xdotool", "mousemove", "800", "480"});
  chooseMode("standard", "dim", std::move(more));
  startHushpane();
}

void WholeDesktop::use(const std::string& mode, const std::string& surface, SettingsValues more) {
  chooseMode("standard", surface, std::move(more));
  toMode("standard");
  toMode(mode);
}

void WholeDesktop::toMode(const std::string& mode) {
  runHushpane({"hushpane://mode/" + mode});
  EXPECT_TRUE(entersMode(mode));
}

// --- what people see ---

double WholeDesktop::shareLike(const Rect& wanted, double alpha, int tolerance) const {
  const Rect area = wanted.intersection(DesktopSession::screen);
  if (area.width < 1 || area.height < 1) return 0;
  const Picture now = x().capture(area);
  int count = 0, alike = 0;
  for (int row = 0; row < now.height; row += 3) {
    for (int column = 0; column < now.width; column += 3) {
      ++count;
      const Pixel before = untouched().at(int(area.x) + column, int(area.y) + row);
      alike += isNear(now.at(column, row), dimmed(before, alpha), tolerance);
    }
  }
  return count ? double(alike) / count : 0;
}

testing::AssertionResult WholeDesktop::looks(const Rect& area, double alpha, const std::string& what,
                                             int tolerance) const {
  constexpr double enough = 0.8;  // carets blink, icons come late
  double share = 0;
  if (waitUntil([&] { return (share = shareLike(area, alpha, tolerance)) >= enough; }, limit_))
    return testing::AssertionSuccess();
  failurePicture();
  const Point middle = center(area);
  if (!DesktopSession::screen.contains(middle)) return testing::AssertionFailure() << what << " is not on the screen";
  const Pixel seen = x().pixel(middle), before = untouched().at(int(middle.x), int(middle.y));
  return testing::AssertionFailure() << what << " is not " << (alpha > 0 ? "covered" : "clear") << ": only "
                                     << int(share * 100) << " % are, in the middle is " << seen << " instead of "
                                     << dimmed(before, alpha);
}

testing::AssertionResult WholeDesktop::seesClear(const std::vector<const Application*>& clear) const {
  for (const Application* application : applications().all()) {
    const bool isClear = std::find(clear.begin(), clear.end(), application) != clear.end();
    waitUntil([&] { return DesktopSession::screen.contains(center(application->inside())); }, limit_);
    if (const auto seen = looks(application->inside(), isClear ? 0 : balanced, application->name()); !seen) return seen;
  }
  for (const Point spot : DesktopSession::bareSpots)
    if (const auto seen = looks(around(spot), balanced, "the bare desktop"); !seen) return seen;
  return testing::AssertionSuccess();
}

testing::AssertionResult WholeDesktop::showsDesktop(Pixel upper, Pixel lower,
                                                    const std::vector<const Application*>& among) const {
  constexpr int tolerance = 12;
  constexpr double blurReach = 90, icons = 170;
  std::vector<Rect> other{{0, 0, icons, DesktopSession::screen.height},
                          {0, DesktopSession::edge - blurReach, DesktopSession::screen.width, 2 * blurReach}};
  for (const Rect& bar : session().furniture()) other.push_back(grown(bar, 40));
  for (const Application* application : among) other.push_back(grown(application->bounds(), blurReach));
  std::ostringstream wrong;
  const auto isRight = [&] {
    wrong.str("");
    const Picture now = x().capture();
    for (int row = 10; row < now.height; row += 20) {
      for (int column = 10; column < now.width; column += 20) {
        if (isIn(other, {double(column), double(row)})) continue;
        const Pixel expected = row < DesktopSession::edge ? upper : lower, seen = now.at(column, row);
        if (isNear(seen, expected, tolerance)) continue;
        wrong << seen << " instead of " << expected << " at " << column << ',' << row;
        return false;
      }
    }
    return true;
  };
  if (waitUntil(isRight, limit_)) return testing::AssertionSuccess();
  failurePicture();
  return testing::AssertionFailure() << wrong.str();
}

Pixel WholeDesktop::tinted(Pixel pixel) {
  const auto& tint = desktops::darkHud::tint;
  const auto mix = [&](int channel, double ink) {
    return std::uint32_t(channel * (1 - tint.alpha) + ink * 255 * tint.alpha + 0.5);
  };
  return {mix(pixel.red(), tint.red) << 16 | mix(pixel.green(), tint.green) << 8 | mix(pixel.blue(), tint.blue)};
}

double WholeDesktop::meanBrightness(const Picture& picture) {
  double sum = 0;
  for (const std::uint32_t value : picture.pixels) sum += Pixel{value}.brightness() / 3.0;
  return picture.pixels.empty() ? 0 : sum / double(picture.pixels.size());
}

// Buttons of windows come and go, but a bar that is covered or gone looks different as a whole.
testing::AssertionResult WholeDesktop::barsAreClear() const {
  for (const Rect& bar : session().bars()) {
    Picture before{int(bar.width), int(bar.height), {}};
    for (int row = int(bar.y); row < int(bar.bottom()); ++row)
      for (int column = 0; column < before.width; ++column) before.pixels.push_back(untouched().at(column, row).value);
    const double was = meanBrightness(before);
    double now = 0;
    const auto isClear = [&] {
      now = meanBrightness(x().capture(bar));
      return std::abs(now - was) < std::max(12., was * 0.25);
    };
    if (waitUntil(isClear, limit_)) continue;
    failurePicture();
    return testing::AssertionFailure() << "the bar's mean is " << now << " instead of " << was;
  }
  return testing::AssertionSuccess();
}

std::vector<Point> WholeDesktop::changed(const Picture& before, const Picture& after) {
  constexpr int clearly = 30;
  std::vector<Point> points;
  for (int row = 0; row < before.height; ++row)
    for (int column = 0; column < before.width; ++column)
      if (!isNear(before.at(column, row), after.at(column, row), clearly))
        points.push_back({double(column), double(row)});
  return points;
}

Rect WholeDesktop::boundsOf(const std::vector<Point>& points) {
  if (points.empty()) return {};
  double left = 1e9, top = 1e9, right = 0, bottom = 0;
  for (const Point& point : points) {
    left = std::min(left, point.x), right = std::max(right, point.x + 1);
    top = std::min(top, point.y), bottom = std::max(bottom, point.y + 1);
  }
  return {left, top, right - left, bottom - top};
}

// What is nearer to the uncovered picture than to the covered one.
testing::AssertionResult WholeDesktop::isClearIn(const Picture& seen, const Picture& bare,
                                                 const std::vector<Point>& places) {
  std::size_t clear = 0;
  for (const Point& place : places) {
    const Pixel now = seen.at(int(place.x), int(place.y)), before = bare.at(int(place.x), int(place.y));
    clear += distance(now, before) <= distance(now, dimmed(before, balanced));
  }
  constexpr double mostOf = 0.75;  // some are translucent, and so are shadows
  if (double(clear) >= mostOf * double(places.size())) return testing::AssertionSuccess();
  return testing::AssertionFailure() << clear << " of " << places.size() << " pixels are clear";
}

std::vector<Point> WholeDesktop::pointsOf(const Rect& area) {
  const Rect shown = area.intersection(DesktopSession::screen);
  std::vector<Point> points;
  for (double row = shown.y; row < shown.bottom(); ++row)
    for (double column = shown.x; column < shown.right(); ++column) points.push_back({column, row});
  return points;
}

void WholeDesktop::staysClear(const std::function<void()>& open, const std::function<void()>& close, int fewestPixels) {
  EXPECT_TRUE(looks(around(DesktopSession::bareSpots[0]), balanced, "the bare desktop"));
  const Picture before = settledPicture();
  open();
  const auto isThere = [&] { return changed(before, x().capture()).size() >= std::size_t(fewestPixels); };
  EXPECT_TRUE(waitUntil(isThere, 8s)) << "nothing came";
  wait(700ms);  // some draw it in steps
  const Picture covered = settledPicture();
  picture();
  const auto places = changed(before, covered);
  toMode("standard");
  wait(300ms);
  const Picture bare = settledPicture();
  EXPECT_TRUE(isClearIn(covered, bare, places));
  close();
  waitUntil([&] { return changed(before, x().capture()).size() < std::size_t(fewestPixels); }, 2s);
  toMode("focus");
}

std::vector<Rect> WholeDesktop::panels() const {
  std::vector<Rect> frames;
  for (const xcb_window_t window : windowsFrom(100, 100))
    if (x().text(window, "_NET_WM_NAME") == "Hushpane panel" && x().isOnScreen(window))
      frames.push_back(x().bounds(window));
  return frames;
}

}  // namespace hushpane::x11_tests

#include "overlay/frontmost_coverage.h"

#include <algorithm>
#include <cmath>

namespace hushpane {

namespace {

using platform::Rect;
using platform::Screen;
using platform::WindowInfo;

constexpr double minimumAlpha = 0.01;           // a window must be above
constexpr double minimumSideForSearch = 20;     // points, a side must be above
constexpr double minimumSideForCoverage = 100;  // points, a side must be above
constexpr double sizeMatchTolerance = 12;       // points, the difference must be below
constexpr double touchedRatio = 0.1;
constexpr double filledRatio = 0.92;
constexpr double filledRatioWithSizeMatch = 0.5;

bool qualifies(const WindowInfo& window, std::int32_t pid, double minimumSide) {
  return window.ownerPid == pid && window.layer == 0 && window.alpha && *window.alpha > minimumAlpha &&
         window.bounds.width && *window.bounds.width > minimumSide && window.bounds.height &&
         *window.bounds.height > minimumSide;
}

Rect boundsOf(const WindowInfo& window) {
  return {window.bounds.x.value_or(0), window.bounds.y.value_or(0), *window.bounds.width, *window.bounds.height};
}

// The part of the screen that the window covers.
double screenRatio(const Rect& window, const Screen& screen) {
  const double common = window.intersection(screen.frame).area();
  const double whole = screen.frame.area();
  return whole > 1 ? common / whole : common;
}

bool matchesSize(const Rect& window, const Screen& screen) {
  return std::abs(window.width - screen.frame.width) < sizeMatchTolerance &&
         std::abs(window.height - screen.frame.height) < sizeMatchTolerance;
}

bool isHalfFilledBySizeMatch(const Rect& window, const Screen& screen) {
  return matchesSize(window, screen) && screenRatio(window, screen) > filledRatioWithSizeMatch;
}

}  // namespace

FrontmostCoverage coverageOf(std::int32_t pid, WindowSpan windows, const std::vector<Screen>& screens) {
  FrontmostCoverage result;
  for (const WindowInfo& window : windows) {
    if (!qualifies(window, pid, minimumSideForCoverage) || !window.bounds.x || !window.bounds.y) continue;
    const Rect bounds = boundsOf(window);
    result.area = std::max(result.area, bounds.area());
    result.hasWindow = true;
    for (const Screen& screen : screens) {
      if (!screen.displayId) continue;
      const double ratio = screenRatio(bounds, screen);
      if (ratio > touchedRatio) result.touched.insert(*screen.displayId);
      if (ratio > filledRatio || isHalfFilledBySizeMatch(bounds, screen)) result.covered.insert(*screen.displayId);
    }
  }
  return result;
}

std::optional<platform::WindowNumber> frontWindowNumber(std::int32_t pid, WindowSpan windows,
                                                        const std::vector<Screen>& screens) {
  for (const WindowInfo& window : windows) {
    if (!qualifies(window, pid, minimumSideForSearch) || !window.number) continue;
    const Rect bounds = boundsOf(window);
    const auto isFilled = [&bounds](const Screen& screen) { return isHalfFilledBySizeMatch(bounds, screen); };
    if (std::none_of(screens.begin(), screens.end(), isFilled)) return window.number;
  }
  return std::nullopt;
}

}  // namespace hushpane

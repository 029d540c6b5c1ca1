// The part of OverlayManager that follows the frontmost application while focus shows: ten times a second, and at once
// after an activation, the overlays go directly beneath its front window, and displays that it fills or grows into are
// left free.

#include <algorithm>
#include <cmath>
#include <utility>

#include "overlay/overlay_manager.h"

namespace hushpane {

namespace {

constexpr double trackingInterval = 0.1;     // seconds
constexpr double growthMinimumArea = 10000;  // square points; a smaller window before never counts as growing
constexpr double growthFactor = 1.4;
constexpr double settledChange = 0.05;  // relative change of area between two ticks, below is still

double relativeChange(double before, double after) {
  const double difference = std::abs(after - before);
  return before > 1 ? difference / before : difference;
}

}  // namespace

void OverlayManager::startZOrderTracking() {
  const auto tick = lifetime_.weak([this] {
    if (currentState_.showFocus)
      updateZOrder();
    else
      zOrderTimer_.reset();
  });
  platform_.mainQueue().async(tick);
  zOrderTimer_ = platform_.mainQueue().repeating(trackingInterval, tick);
}

void OverlayManager::restartFrontmostTracking() {
  if (!currentState_.showFocus) return;
  forgetFrontmostWindow();
  startZOrderTracking();
}

void OverlayManager::activeSpaceDidChange() {
  if (!currentState_.showFocus) return;
  zOrderTimer_.reset();
  forgetFrontmostWindow();
  for (const auto id : frontmostCoverage().covered) {
    const auto found = overlayWindows_.find(id);
    if (found != overlayWindows_.end() && found->second->isVisible()) found->second->window().setAlpha(0);
  }
  startZOrderTracking();
}

void OverlayManager::forgetFrontmostWindow() {
  lastFrontmostWindowData_ = {};
  suppressedDisplayIDs_.clear();
}

std::optional<std::int32_t> OverlayManager::frontmostPid() const {
  const auto application = platform_.workspace().frontmostApplication();
  return application ? std::optional(application->processIdentifier) : std::nullopt;
}

FrontmostCoverage OverlayManager::frontmostCoverage() const {
  const auto pid = frontmostPid();
  if (!pid || *pid == platform_.processIdentifier()) return {};
  const auto windows = platform_.windowList().onScreenWindows();
  return windows ? coverageOf(*pid, *windows, platform_.screens().screens()) : FrontmostCoverage{};
}

std::optional<platform::WindowNumber> OverlayManager::frontmostWindowNumber() const {
  const auto pid = frontmostPid();
  if (!pid || *pid == platform_.processIdentifier()) return std::nullopt;
  const auto windows = platform_.windowList().onScreenWindows();
  return windows ? frontWindowNumber(*pid, *windows, platform_.screens().screens()) : std::nullopt;
}

void OverlayManager::updateZOrder() {
  if (!currentState_.showFocus) return;
  const std::int32_t pid = frontmostPid().value_or(0);
  const FrontmostCoverage coverage = frontmostCoverage();
  const auto previous = std::exchange(lastFrontmostWindowData_, {pid, coverage.area});
  updateSuppression(previous, pid, coverage);

  DisplaySet hidden = coverage.covered;
  hidden.insert(suppressedDisplayIDs_.begin(), suppressedDisplayIDs_.end());
  applyCoverage(hidden, coverage.hasWindow);
  if (const auto number = frontmostWindowNumber())
    orderBelow(*number, hidden);
  else if (coverage.hasWindow && hidden.empty())
    freeTouchedDisplays(coverage.touched);
}

// A window that grows fast (it zooms or enters full screen) keeps its displays free until its size settles.
void OverlayManager::updateSuppression(const FrontmostWindowData& previous, std::int32_t pid,
                                       const FrontmostCoverage& coverage) {
  const bool grew =
      pid == previous.pid && previous.area > growthMinimumArea && coverage.area > growthFactor * previous.area;
  if (grew) {
    suppressedDisplayIDs_.insert(coverage.touched.begin(), coverage.touched.end());
    return;
  }
  const bool stillChanging = previous.area <= 0 || relativeChange(previous.area, coverage.area) >= settledChange;
  if (!(coverage.covered.empty() && coverage.hasWindow && stillChanging)) suppressedDisplayIDs_.clear();
}

void OverlayManager::applyCoverage(const DisplaySet& hidden, bool hasWindow) {
  for (const auto& [id, overlay] : overlayWindows_) {
    if (hidden.contains(id)) {
      if (overlay->isShown()) overlay->hideAtOnce();
    } else if (hasWindow && isEnabled(id)) {
      overlay->fadeInShortly();
    }
  }
}

void OverlayManager::orderBelow(platform::WindowNumber number, const DisplaySet& hidden) {
  for (const auto& [id, overlay] : overlayWindows_) {
    if (hidden.contains(id) || !isEnabled(id)) continue;
    overlay->window().setLevel(platform::windowLevel::normal);
    overlay->window().orderBelow(number);
    overlay->fadeInShortly();
  }
}

void OverlayManager::freeTouchedDisplays(const DisplaySet& touched) {
  for (const auto& [id, overlay] : overlayWindows_)
    if (touched.contains(id) && overlay->isShown()) overlay->hideAtOnce();
}

}  // namespace hushpane

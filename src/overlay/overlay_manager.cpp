#include "overlay/overlay_manager.h"

#include <utility>

namespace hushpane {

namespace {

constexpr double windowFadeDuration = 0.7;  // seconds

constexpr platform::Animation windowFade(double duration) {
  return {duration, platform::TimingFunction::easeOut};
}

}  // namespace

OverlayManager::OverlayManager(platform::Platform& platform, PreferencesStore& preferences)
    : platform_(platform), preferences_(preferences) {}

void OverlayManager::syncWindowsWithScreens() {
  DisplaySet seen;
  for (const auto& screen : platform_.screens().screens()) {
    if (!screen.displayId) continue;
    const auto id = *screen.displayId;
    seen.insert(id);
    auto& overlay = overlayWindows_[id];
    if (overlay)
      overlay->window().setFrame(screen.frame);
    else
      overlay = std::make_unique<OverlayWindow>(id, screen.frame, platform_, preferences_);
  }
  std::erase_if(overlayWindows_, [&seen](const auto& entry) {
    if (seen.contains(entry.first)) return false;
    entry.second->window().orderOut();
    return true;
  });
}

void OverlayManager::registerObservers() {
  auto& workspace = platform_.workspace().notificationCenter();
  screenObserver_ = platform_.notificationCenter().addObserver(platform::notification::screenParametersDidChange,
                                                               [this] { screenParametersChanged(); });
  wakeObserver_ = workspace.addObserver(platform::notification::didWake, [this] { systemDidWake(); });
  spaceObserver_ =
      workspace.addObserver(platform::notification::activeSpaceDidChange, [this] { activeSpaceDidChange(); });
}

void OverlayManager::apply(const RenderedState& state, bool immediate, std::optional<double> fadeOutDuration) {
  currentState_ = state;
  const int level = state.showFocus ? platform::windowLevel::normal : platform::windowLevel::aboveDesktop;
  for (const auto& [id, overlay] : overlayWindows_) {
    const bool shows = state.showsCover() && isEnabled(id);
    if (shows) overlay->window().setLevel(level);
    overlay->contentView().apply(state, !immediate);
    if (shows)
      show(*overlay, immediate);
    else if (overlay->isVisible())
      hide(*overlay, immediate, fadeOutDuration);
  }
  if (state.showFocus)
    startZOrderTracking();
  else
    zOrderTimer_.reset();
}

void OverlayManager::show(OverlayWindow& overlay, bool immediate) {
  auto& window = overlay.window();
  if (!window.isVisible()) {
    window.setAlpha(immediate ? 1 : 0);
    window.orderFront();
  }
  if (immediate)
    window.setAlpha(1);
  else
    window.animateAlpha(1, windowFade(windowFadeDuration));
}

void OverlayManager::hide(OverlayWindow& overlay, bool immediate, std::optional<double> fadeOutDuration) {
  if (immediate) {
    overlay.hideAtOnce();
    return;
  }
  auto& window = overlay.window();
  window.animateAlpha(0, windowFade(fadeOutDuration.value_or(windowFadeDuration)), [&window] {
    if (window.alpha() == 0) window.orderOut();
  });
}

void OverlayManager::screenParametersChanged() {
  syncWindowsWithScreens();
  apply(currentState_, true, std::nullopt);
  platform_.notificationCenter().post(displaysDidChange);
}

void OverlayManager::systemDidWake() {
  apply(currentState_, true, std::nullopt);
}

}  // namespace hushpane

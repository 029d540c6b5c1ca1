#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string_view>

#include "overlay/frontmost_coverage.h"
#include "overlay/overlay_window.h"
#include "platform/lifetime.h"
#include "platform/platform.h"
#include "state/display_enablement.h"
#include "state/preferences_store.h"
#include "state/rendered_state.h"

namespace hushpane {

// Owns one overlay window per display and puts the current state on screen: which displays are covered, at which level,
// with which fades. While focus shows, keeps the overlays directly beneath the frontmost application's front window
// (see frontmost_tracking.cpp). Screens without a display id are ignored. The state controller owns the one instance.
class OverlayManager {
 public:
  // Default centre: the windows were rebuilt after a change of displays.
  static constexpr std::string_view displaysDidChange = "com.corvane.Hushpane.displaysDidChange";

  OverlayManager(platform::Platform& platform, PreferencesStore& preferences);

  const DisplayEnablement& displayEnablement() const { return displayEnablement_; }
  void setDisplayEnablement(DisplayEnablement enablement) { displayEnablement_ = std::move(enablement); }

  const std::map<platform::DisplayId, std::unique_ptr<OverlayWindow>>& overlayWindows() const {
    return overlayWindows_;
  }
  const RenderedState& currentState() const { return currentState_; }

  // Makes exactly one window per screen; new ones are invisible until the next apply.
  void syncWindowsWithScreens();
  void registerObservers();
  // Brings every window into line with `state`. `immediate`: no fades of windows. `fadeOutDuration`, in seconds, is for
  // windows that must disappear; without it 0.7.
  void apply(const RenderedState& state, bool immediate, std::optional<double> fadeOutDuration);

  void screenParametersChanged();
  void systemDidWake();
  void activeSpaceDidChange();

  // Starts the ticks anew, the first of them on the next turn of the main queue.
  void startZOrderTracking();
  // After another application came to the front.
  void restartFrontmostTracking();
  // One tick.
  void updateZOrder();
  FrontmostCoverage frontmostCoverage() const;
  std::optional<platform::WindowNumber> frontmostWindowNumber() const;

 private:
  using DisplaySet = std::set<platform::DisplayId>;

  struct FrontmostWindowData {
    std::int32_t pid = 0;
    double area = 0;
  };

  bool isEnabled(platform::DisplayId display) const { return hushpane::isEnabled(displayEnablement_, display); }
  void show(OverlayWindow& overlay, bool immediate);
  void hide(OverlayWindow& overlay, bool immediate, std::optional<double> fadeOutDuration);

  std::optional<std::int32_t> frontmostPid() const;
  void forgetFrontmostWindow();
  void updateSuppression(const FrontmostWindowData& previous, std::int32_t pid, const FrontmostCoverage& coverage);
  void applyCoverage(const DisplaySet& hidden, bool hasWindow);
  void orderBelow(platform::WindowNumber number, const DisplaySet& hidden);
  void freeTouchedDisplays(const DisplaySet& touched);

  platform::Platform& platform_;
  PreferencesStore& preferences_;
  DisplayEnablement displayEnablement_;
  std::map<platform::DisplayId, std::unique_ptr<OverlayWindow>> overlayWindows_;
  RenderedState currentState_;
  platform::Timer zOrderTimer_;
  FrontmostWindowData lastFrontmostWindowData_;
  DisplaySet suppressedDisplayIDs_;
  platform::Token screenObserver_;
  platform::Token wakeObserver_;
  platform::Token spaceObserver_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane

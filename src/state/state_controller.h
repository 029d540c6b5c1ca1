#pragma once

#include <optional>

#include "input/reveal_key_monitor.h"
#include "overlay/overlay_manager.h"
#include "platform/lifetime.h"
#include "platform/platform.h"
#include "state/observable_object.h"
#include "state/preferences_store.h"
#include "state/rendered_state.h"
#include "state/review_policy.h"
#include "state/veil_mode.h"
#include "state/widget_bridge.h"

namespace hushpane {

// The single owner of the user's mode: every way of changing it ends here. Turns the mode and the reveal hold into what
// the overlays show, remembers the mode across launches and publishes it to the widget. Its construction brings up the
// overlays in the restored mode. Announces changes of userMode() and isRevealHeld().
class StateController : public ObservableObject {
 public:
  static StateController& shared();
  StateController(platform::Platform& platform, PreferencesStore& preferences, WidgetBridge& widgetBridge);

  VeilMode userMode() const { return userMode_; }
  bool isRevealHeld() const { return isRevealHeld_; }
  RenderedState renderedState() const { return resolveRenderedState(userMode_, isRevealHeld_); }
  OverlayManager& overlayManager() { return overlayManager_; }
  RevealKeyMonitor& revealMonitor() { return revealMonitor_; }

  // Raised by mode switches, lowered by the application shell.
  bool pendingReviewRequest() const { return pendingReviewRequest_; }
  void clearReviewRequest() { pendingReviewRequest_ = false; }
  void clearReviewRequestAfter(double seconds);

  // The user chose a mode: stores it as the last user mode, assigns it and counts a switch, also when it is in force
  // already. Reveal is never chosen.
  void setMode(VeilMode mode);
  void setStandard();
  // Moves into the mode from any other; inside it, nothing happens.
  void toggleCleanDesktop();
  void toggleFocus();

  // Assigns the mode, applies and publishes it; neither stored nor counted.
  void setUserMode(VeilMode mode);

  // `fadeOutDuration` in seconds; without it, the overlays' own.
  void applyRenderedState(bool immediate, std::optional<double> fadeOutDuration = std::nullopt);
  void publishMode();
  void loadDisplayEnablement();
  void saveDisplayEnablement();
  void handleWidgetModeChange();

 private:
  VeilMode restoreUserMode() const;
  void recordModeSwitch();
  void connectRevealMonitor();
  void registerObservers();
  void revealChanged(bool isHeld, std::optional<double> fadeOutDuration);

  platform::Platform& platform_;
  WidgetBridge& widgetBridge_;
  ReviewPolicy reviewPolicy_;
  VeilMode userMode_ = VeilMode::standard;
  bool isRevealHeld_ = false;
  OverlayManager overlayManager_;
  RevealKeyMonitor revealMonitor_;
  bool pendingReviewRequest_ = false;
  platform::WorkItem reviewClearing_;
  platform::Token activationObserver_;
  platform::Token displayObserver_;
  platform::Token widgetObserver_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane

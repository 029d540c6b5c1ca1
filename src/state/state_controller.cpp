#include "state/state_controller.h"

#include <memory>
#include <string>
#include <utility>

#include "state/display_enablement.h"
#include "state/stored_keys.h"

namespace hushpane {

namespace {
constexpr double revealFadeOutDuration = 0.22;  // seconds
}

StateController& StateController::shared() {
  return platform::Platform::current().instance<StateController>([](platform::Platform& platform) {
    return std::make_shared<StateController>(platform, PreferencesStore::shared(), WidgetBridge::shared());
  });
}

StateController::StateController(platform::Platform& platform, PreferencesStore& preferences,
                                 WidgetBridge& widgetBridge)
    : platform_(platform),
      widgetBridge_(widgetBridge),
      reviewPolicy_(platform),
      overlayManager_(platform, preferences),
      revealMonitor_(platform) {
  overlayManager_.syncWindowsWithScreens();
  overlayManager_.registerObservers();
  userMode_ = restoreUserMode();
  applyRenderedState(false);
  publishMode();
  loadDisplayEnablement();
  reviewPolicy_.recordSession();
  connectRevealMonitor();
  registerObservers();
  revealMonitor_.start();
  applyRenderedState(true);
  publishMode();
}

void StateController::setMode(VeilMode mode) {
  if (mode == VeilMode::reveal) return;
  platform_.userDefaults().set(storedKeys::lastUserMode, std::string(rawValue(mode)));
  setUserMode(mode);
  recordModeSwitch();
}

void StateController::setStandard() {
  setMode(VeilMode::standard);
}

void StateController::toggleCleanDesktop() {
  if (userMode_ != VeilMode::cleanDesktop) setMode(VeilMode::cleanDesktop);
}

void StateController::toggleFocus() {
  if (userMode_ != VeilMode::focus) setMode(VeilMode::focus);
}

void StateController::setUserMode(VeilMode mode) {
  objectWillChange();
  userMode_ = mode;
  applyRenderedState(false);
  publishMode();
}

void StateController::clearReviewRequestAfter(double seconds) {
  reviewClearing_ = platform_.mainQueue().after(seconds, lifetime_.weak([this] { clearReviewRequest(); }));
}

void StateController::applyRenderedState(bool immediate, std::optional<double> fadeOutDuration) {
  overlayManager_.apply(renderedState(), immediate, fadeOutDuration);
}

void StateController::publishMode() {
  widgetBridge_.setSharedString(rawValue(userMode_), storedKeys::userMode);
  platform_.widgetCenter().reloadAllTimelines();
}

void StateController::loadDisplayEnablement() {
  const auto stored = platform_.userDefaults().get<platform::Dictionary>(storedKeys::displayEnablement);
  overlayManager_.setDisplayEnablement(decodeDisplayEnablement(stored.value_or(platform::Dictionary{})));
}

void StateController::saveDisplayEnablement() {
  platform_.userDefaults().set(storedKeys::displayEnablement,
                               encodeDisplayEnablement(overlayManager_.displayEnablement()));
}

void StateController::handleWidgetModeChange() {
  const auto stored = widgetBridge_.sharedString(storedKeys::userMode);
  const auto mode = stored ? fromRawValue<VeilMode>(*stored) : std::nullopt;
  if (!mode || *mode == userMode_) return;
  platform_.mainQueue().async(lifetime_.weak([this, mode = *mode] {
    if (isUserMode(mode)) setMode(mode);
  }));
}

VeilMode StateController::restoreUserMode() const {
  const auto stored = platform_.userDefaults().get<std::string>(storedKeys::lastUserMode);
  const auto mode = stored ? fromRawValue<VeilMode>(*stored) : std::nullopt;
  return mode && isUserMode(*mode) ? *mode : VeilMode::standard;
}

void StateController::recordModeSwitch() {
  if (reviewPolicy_.recordModeSwitch()) pendingReviewRequest_ = true;
}

void StateController::connectRevealMonitor() {
  auto& queue = platform_.mainQueue();
  revealMonitor_.onPressed = lifetime_.weak(
      [this, &queue] { queue.async(lifetime_.weak([this] { revealChanged(true, revealFadeOutDuration); })); });
  revealMonitor_.onReleased =
      lifetime_.weak([this, &queue] { queue.async(lifetime_.weak([this] { revealChanged(false, std::nullopt); })); });
}

void StateController::registerObservers() {
  activationObserver_ = platform_.workspace().notificationCenter().addObserver(
      platform::notification::didActivateApplication,
      lifetime_.weak([this] { overlayManager_.restartFrontmostTracking(); }));
  displayObserver_ =
      platform_.notificationCenter().addObserver(OverlayManager::displaysDidChange, lifetime_.weak([this] {
        loadDisplayEnablement();
        applyRenderedState(true);
      }));
  widgetObserver_ = platform_.distributedNotificationCenter().addObserver(
      WidgetBridge::widgetModeChange, lifetime_.weak([this] { handleWidgetModeChange(); }));
}

void StateController::revealChanged(bool isHeld, std::optional<double> fadeOutDuration) {
  objectWillChange();
  isRevealHeld_ = isHeld;
  applyRenderedState(false, fadeOutDuration);
}

}  // namespace hushpane

#include "app/app_delegate.h"

#include <utility>

#include "app/mode_url.h"
#include "input/shortcut_registry.h"
#include "state/corvane_updater.h"
#include "state/preferences_store.h"
#include "state/state_controller.h"

namespace hushpane {

AppDelegate::AppDelegate(platform::Platform& platform, AppRouter& router)
    : platform_(platform), router_(router), shakeDetector_(platform) {}

void AppDelegate::applicationDidFinishLaunching() {
  platform_.application().setActivationPolicy(platform::ActivationPolicy::accessory);
  CorvaneUpdater::shared();
  auto& state = StateController::shared();
  state.revealMonitor().modifier = revealModifierFrom(PreferencesStore::shared().revealModifierRaw.get());
  ShortcutRegistry::shared().start();
  connectShakeDetector();
  auto& queue = platform_.mainQueue();
  queue.async([&application = platform_.application()] { application.activateIgnoringOtherApps(true); });
  queue.async(lifetime_.weak([this] { showWelcomeIfNeeded(); }));
}

void AppDelegate::connectShakeDetector() {
  shakeDetector_.onShake = [] { StateController::shared().setStandard(); };
  if (PreferencesStore::shared().mouseShakeEnabled.get()) shakeDetector_.start();
  // Any setting may have changed; only another value of this one goes on. The first one always does.
  shakePrefCancellable_ =
      platform_.notificationCenter().addObserver(platform::notification::userDefaultsDidChange, lifetime_.weak([this] {
        const bool enabled = PreferencesStore::shared().mouseShakeEnabled.get();
        if (std::exchange(deliveredShakePreference_, enabled) == enabled) return;
        platform_.mainQueue().async(lifetime_.weak([this, enabled] { mouseShakePreferenceChanged(enabled); }));
      }));
}

void AppDelegate::mouseShakePreferenceChanged(bool enabled) {
  enabled ? shakeDetector_.start() : shakeDetector_.stop();
}

void AppDelegate::showWelcomeIfNeeded() {
  if (router_.showingWelcome()) return;
  if (platform_.userDefaults().get<bool>(storedKeys::hasSeenWelcome).value_or(false)) return;
  router_.setShowingWelcome(true);
  hint_ = platform_.mainQueue().after(hintDelay, lifetime_.weak([this] {
    if (const auto show = showMenuBarHint) show();
  }));
}

void AppDelegate::handleOpenURLs(const std::vector<std::string>& urls) {
  for (const auto& url : urls)
    if (const auto mode = requestedMode(url)) StateController::shared().setMode(*mode);
}

}  // namespace hushpane

#include "app/app_delegate.h"

#include "app/mode_url.h"
#include "state/preferences_store.h"
#include "state/state_controller.h"

namespace hushpane {

void AppDelegate::applicationDidFinishLaunching() {
  platform_.application().setActivationPolicy(platform::ActivationPolicy::accessory);
  auto& state = StateController::shared();
  const auto& preferences = PreferencesStore::shared();
  state.revealMonitor().modifier = revealModifierFrom(preferences.revealModifierRaw.get());
}

void AppDelegate::handleOpenURLs(const std::vector<std::string>& urls) {
  for (const auto& url : urls)
    if (const auto mode = requestedMode(url)) StateController::shared().setMode(*mode);
}

}  // namespace hushpane

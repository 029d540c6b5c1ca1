#include "state/app_router.h"

#include "state/stored_keys.h"

namespace hushpane {

AppRouter& AppRouter::shared() {
  return platform::Platform::current().instance<AppRouter>();
}

void AppRouter::setShowingSettings(bool showing) {
  objectWillChange();
  showingSettings_ = showing;
}

void AppRouter::setShowingWelcome(bool showing) {
  objectWillChange();
  showingWelcome_ = showing;
}

void AppRouter::continueFromWelcome() {
  setShowingWelcome(false);
  platform_.userDefaults().set(storedKeys::hasSeenWelcome, true);
}

}  // namespace hushpane

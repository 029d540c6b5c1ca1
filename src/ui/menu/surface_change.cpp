#include "ui/menu/surface_change.h"

#include "state/state_controller.h"

namespace hushpane {

void reapplyOverlays() {
  auto& overlays = StateController::shared().overlayManager();
  overlays.apply(overlays.currentState(), true, std::nullopt);
}

void announceSurfaceChange(const PreferencesStore& preferences) {
  preferences.objectWillChange();
  reapplyOverlays();
}

}  // namespace hushpane

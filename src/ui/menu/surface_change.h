#pragma once

#include "state/preferences_store.h"

namespace hushpane {

// The overlays show the stored settings at once.
void reapplyOverlays();
// The same, after everybody who follows the settings has heard of it.
void announceSurfaceChange(const PreferencesStore& preferences);

}  // namespace hushpane

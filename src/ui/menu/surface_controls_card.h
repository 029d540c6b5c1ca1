#pragma once

#include "declarative/element.h"
#include "state/preferences_store.h"
#include "state/veil_mode.h"

namespace hushpane {

// Edits how clean desktop or focus covers the desktop. Every change shows on the overlays at once.
struct SurfaceControlsCard {
  VeilMode mode = VeilMode::cleanDesktop;
  PreferencesStore& prefs;
  declarative::AdaptiveColor accent;

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

#pragma once

#include "declarative/element.h"
#include "state/preferences_store.h"

namespace hushpane {

// The settings page of the panel. Keeps nothing of its own: each control shows and changes what is stored elsewhere.
struct PreferencesView {
  PreferencesStore& prefs;

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

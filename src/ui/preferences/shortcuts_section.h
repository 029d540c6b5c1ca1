#pragma once

#include "declarative/element.h"
#include "state/preferences_store.h"

namespace hushpane {

// Whether keys switch modes, and which one lifts the covers.
struct ShortcutsSection {
  PreferencesStore& prefs;

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

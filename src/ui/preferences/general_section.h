#pragma once

#include "declarative/element.h"
#include "state/preferences_store.h"

namespace hushpane {

// When the program starts, how it is reset, and which displays it covers.
struct GeneralSection {
  PreferencesStore& prefs;

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

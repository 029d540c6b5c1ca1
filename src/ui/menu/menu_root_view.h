#pragma once

#include <functional>

#include "declarative/element.h"
#include "state/preferences_store.h"
#include "state/state_controller.h"

namespace hushpane {

// The main page of the panel: chooses the mode and how it covers, the language, and the end of the program.
struct MenuRootView {
  StateController& state;
  PreferencesStore& prefs;
  std::function<void()> onOpenSettings;

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

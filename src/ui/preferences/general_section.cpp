#include "ui/preferences/general_section.h"

#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "state/state_controller.h"
#include "ui/controls/pell_switch_style.h"
#include "ui/global_accent.h"
#include "ui/localized.h"
#include "ui/preferences/display_rows.h"
#include "ui/preferences/section_card.h"

namespace hushpane {

using namespace declarative;

namespace {

// Tells views that displays came or went, once their covers have.
struct DisplayChanges {
  platform::Token observe(std::function<void()> changed) {
    return platform::Platform::current().notificationCenter().addObserver(OverlayManager::displaysDidChange,
                                                                          std::move(changed));
  }
};

Element switchRow(LocalizationKey title, Binding<bool> isOn) {
  return toggle(text(localized(title)), std::move(isOn), PellSwitchStyle{globalAccent, 1});
}

// Shows what the user chose, also where the desktop refuses it, until it is read again.
Element launchRow(Context& context) {
  const auto launchAtLogin = context.state("launchAtLogin", false);
  auto& item = platform::Platform::current().loginItem();
  const auto choose = [launchAtLogin, &item](bool launches) {
    launchAtLogin.set(launches);
    launches ? item.registerItem() : item.unregisterItem();
  };
  return switchRow("Launch at login"_key, {[launchAtLogin] { return launchAtLogin.get(); }, choose})
      .onAppear([launchAtLogin, &item] { launchAtLogin.set(item.isEnabled()); });
}

Element shakeRow(PreferencesStore& prefs) {
  const auto choose = [&prefs](bool isEnabled) {
    prefs.mouseShakeEnabled = isEnabled;
    prefs.objectWillChange();
  };
  return switchRow("Shake mouse to reset mode"_key, {[&prefs] { return prefs.mouseShakeEnabled.get(); }, choose});
}

// Covering them all again forgets which ones were left out.
Element allDisplaysRow(PreferencesStore& prefs) {
  const auto choose = [&prefs](bool appliesToAll) {
    prefs.applyToAllDisplays = appliesToAll;
    if (appliesToAll) {
      auto& state = StateController::shared();
      state.overlayManager().setDisplayEnablement({});
      state.saveDisplayEnablement();
      state.applyRenderedState(true);
    }
    prefs.objectWillChange();
  };
  return switchRow("Apply to all displays"_key, {[&prefs] { return prefs.applyToAllDisplays.get(); }, choose});
}

}  // namespace

Element GeneralSection::body(Context& context) const {
  context.observe(prefs);
  context.observe(StateController::shared());
  DisplayChanges displayChanges;
  context.observe(displayChanges);
  std::vector<Element> rows{launchRow(context), shakeRow(prefs), allDisplaysRow(prefs)};
  if (!prefs.applyToAllDisplays.get()) std::ranges::move(displayRows(), std::back_inserter(rows));
  return sectionCard("GENERAL", std::move(rows));
}

}  // namespace hushpane

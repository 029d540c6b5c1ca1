#include "ui/preferences/shortcuts_section.h"

#include <algorithm>
#include <string>

#include "input/shortcut_registry.h"
#include "state/state_controller.h"
#include "ui/controls/pell_segmented_picker.h"
#include "ui/controls/pell_switch_style.h"
#include "ui/global_accent.h"
#include "ui/isolated.h"
#include "ui/localized.h"
#include "ui/preferences/section_card.h"
#include "ui/preferences/shortcut_label.h"

namespace hushpane {

using namespace declarative;
using Action = HushpaneShortcut::Action;

namespace {

constexpr double pickerItemWidth = 32;  // points
constexpr platform::TextStyle summaryStyle{
    .font = {.size = 11.5, .italic = true}, .lineLimit = 1, .minimumScale = 0.85};

bool isAnyEnabled(const ShortcutRegistry& registry) {
  return std::ranges::any_of(registry.shortcuts(), &HushpaneShortcut::enabled);
}

Element masterRow(ShortcutRegistry& registry) {
  const auto enableAll = [&registry](bool isEnabled) {
    for (const auto action : {Action::setStandard, Action::toggleCleanDesktop, Action::toggleFocus})
      registry.setEnabled(isEnabled, action);
  };
  return toggle(text(localized("Keyboard shortcuts"_key)),
                Binding<bool>{[&registry] { return isAnyEnabled(registry); }, enableAll},
                PellSwitchStyle{globalAccent, 1});
}

Element summary(const ShortcutRegistry& registry) {
  const auto piece = [&registry](LocalizationKey mode, Action action) {
    return localized(mode) + " " + isolated(shortcutLabel(registry.shortcut(action)));
  };
  return text(piece("Standard"_key, Action::setStandard) + "  ·  " + piece("Ambience"_key, Action::toggleCleanDesktop) +
                  "  ·  " + piece("Focus"_key, Action::toggleFocus),
              summaryStyle)
      .foreground(secondary);
}

PellSegmentedPicker<RevealModifier>::Option optionOf(RevealModifier modifier) {
  return {LocalizationKey{symbolOf(modifier)}, modifier};
}

Element revealRow(PreferencesStore& prefs) {
  const auto choose = [&prefs](RevealModifier modifier) {
    prefs.revealModifierRaw = std::string(rawValue(modifier));
    StateController::shared().revealMonitor().modifier = modifier;
    prefs.objectWillChange();
  };
  const PellSegmentedPicker<RevealModifier> picker{
      .selection = {[&prefs] { return revealModifierFrom(prefs.revealModifierRaw.get()); }, choose},
      .options = {optionOf(RevealModifier::option), optionOf(RevealModifier::shift), optionOf(RevealModifier::control),
                  optionOf(RevealModifier::command)},
      .activeTint = globalAccent,
      .itemWidth = pickerItemWidth};
  return horizontalStack({}, {text(localized("Reveal key"_key)).foreground(primary), spacer(), picker});
}

}  // namespace

Element ShortcutsSection::body(Context& context) const {
  auto& registry = ShortcutRegistry::shared();
  context.observe(prefs);
  context.observe(registry);
  return sectionCard("SHORTCUTS",
                     {masterRow(registry), isAnyEnabled(registry) ? summary(registry) : Element(), revealRow(prefs)});
}

}  // namespace hushpane

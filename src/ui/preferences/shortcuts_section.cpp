#include "ui/preferences/shortcuts_section.h"

#include <algorithm>
#include <array>
#include <string>

#include "input/shortcut_registry.h"
#include "state/state_controller.h"
#include "ui/controls/pell_segmented_picker.h"
#include "ui/controls/pell_switch_style.h"
#include "ui/global_accent.h"
#include "ui/isolated.h"
#include "ui/key_names.h"
#include "ui/localized.h"
#include "ui/preferences/section_card.h"
#include "ui/preferences/shortcut_label.h"

namespace hushpane {

using namespace declarative;
using Action = HushpaneShortcut::Action;

namespace {

constexpr double pickerItemWidth = 32;  // points
constexpr double cardWidth = 312;       // points; what the card leaves a row
const platform::TextStyle summaryStyle{.font = {.size = 11.5, .italic = true}, .lineLimit = 1, .minimumScale = 0.85};
constexpr const char* separator = "  ·  ";

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

// All parts of a line shrink alike where it is too long.
platform::TextStyle fittingStyle(const std::string& line) {
  auto style = summaryStyle;
  style.font.size *= platform::Platform::current().textEngine().layout(line, style, cardWidth)->fontScale();
  style.minimumScale = 1;
  return style;
}

Element struckThrough(const Element& words) {
  return words.opacity(0.7).overlay(fill(Rectangle{}).frame({.height = 1}));
}

// A mode with its keys, and what is to be known of them.
struct SummaryPart {
  std::string words;
  std::string keys;
  bool isTaken = false;

  Element in(const platform::TextStyle& style) const {
    const Element line = text(words, style);
    return isTaken ? struckThrough(line).tooltip(localized("%@ is used by another program"_key, {keys}))
                   : line.tooltip(keys);
  }
};

Element summary(const ShortcutRegistry& registry) {
  const auto part = [&registry](LocalizationKey mode, Action action) {
    const auto* shortcut = registry.shortcut(action);
    return SummaryPart{localized(mode) + " " + isolated(shortcutLabel(shortcut)), shortcutKeys(*shortcut),
                       registry.isTaken(action)};
  };
  const std::array parts{part("Standard"_key, Action::setStandard), part("Ambience"_key, Action::toggleCleanDesktop),
                         part("Focus"_key, Action::toggleFocus)};
  const auto style = fittingStyle(parts[0].words + separator + parts[1].words + separator + parts[2].words);
  const auto between = [&style] { return text(separator, style); };
  return horizontalStack({.alignment = VerticalAlignment::firstTextBaseline, .spacing = 0},
                         {parts[0].in(style), between(), parts[1].in(style), between(), parts[2].in(style)})
      .foreground(secondary);
}

PellSegmentedPicker<RevealModifier>::Option optionOf(RevealModifier modifier) {
  return {LocalizationKey{symbolOf(modifier)}, modifier, keyName(modifier)};
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
                     {masterRow(registry), isAnyEnabled(registry) ? summary(registry) : Element(), revealRow(prefs)})
      .onAppear([&registry] { registry.retry(); });
}

}  // namespace hushpane

#include "ui/preferences/shortcut_label.h"

#include <array>
#include <utility>

namespace hushpane {

namespace {

// By place on the ANSI keyboard.
constexpr std::array<std::pair<std::uint16_t, char>, 8> keyNames{
    {{0, 'A'}, {1, 'S'}, {3, 'F'}, {18, '1'}, {19, '2'}, {20, '3'}, {21, '4'}, {23, '5'}}};

char keyName(std::uint16_t keyCode) {
  for (const auto& [code, name] : keyNames)
    if (code == keyCode) return name;
  return '?';
}

}  // namespace

const char* symbolOf(RevealModifier modifier) {
  switch (modifier) {
    case RevealModifier::option: return "⌥";
    case RevealModifier::shift: return "⇧";
    case RevealModifier::control: return "⌃";
    case RevealModifier::command: break;
  }
  return "⌘";
}

std::string shortcutLabel(const HushpaneShortcut* shortcut) {
  if (!shortcut) return "—";
  std::string label;
  for (const auto modifier :
       {RevealModifier::control, RevealModifier::option, RevealModifier::shift, RevealModifier::command})
    if (shortcut->modifiersRaw & flagOf(modifier)) label += symbolOf(modifier);
  return label + keyName(shortcut->keyCode);
}

}  // namespace hushpane

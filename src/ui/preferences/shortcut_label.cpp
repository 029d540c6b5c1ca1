#include "ui/preferences/shortcut_label.h"

#include <array>
#include <utility>

#include "ui/key_names.h"

namespace hushpane {

namespace {

// By place on the ANSI keyboard.
constexpr std::array<std::pair<std::uint16_t, char>, 8> letters{
    {{0, 'A'}, {1, 'S'}, {3, 'F'}, {18, '1'}, {19, '2'}, {20, '3'}, {21, '4'}, {23, '5'}}};

char letterOf(std::uint16_t keyCode) {
  for (const auto& [code, letter] : letters)
    if (code == keyCode) return letter;
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
  for (const auto modifier : modifiersInOrder)
    if (shortcut->modifiersRaw & flagOf(modifier)) label += symbolOf(modifier);
  return label + letterOf(shortcut->keyCode);
}

std::string shortcutKeys(const HushpaneShortcut& shortcut) {
  return keyNames(shortcut.modifiers(), std::string(1, letterOf(shortcut.keyCode)));
}

}  // namespace hushpane

#include "ui/key_names.h"

#include "ui/localized.h"

namespace hushpane {

std::string keyName(RevealModifier modifier) {
  switch (modifier) {
    case RevealModifier::option: return localized("Alt"_key);
    case RevealModifier::shift: return localized("Shift"_key);
    case RevealModifier::control: return localized("Ctrl"_key);
    case RevealModifier::command: break;
  }
  return localized("Super"_key);
}

std::string keyNames(platform::ModifierFlags modifiers, const std::string& key) {
  std::string names;
  for (const auto modifier : modifiersInOrder)
    if (modifiers & flagOf(modifier)) names += keyName(modifier) + "+";
  return names + key;
}

}  // namespace hushpane

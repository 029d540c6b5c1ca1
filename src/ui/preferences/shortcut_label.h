#pragma once

#include <string>

#include "input/hushpane_shortcut.h"
#include "input/reveal_modifier.h"

namespace hushpane {

// The sign of a modifier key, the same in every language.
const char* symbolOf(RevealModifier modifier);

// How a shortcut is written, such as ⌃⌥S; a dash where there is none. Whether it is enabled does not show.
std::string shortcutLabel(const HushpaneShortcut* shortcut);
// The same by the names of the keys, such as Ctrl+Alt+S.
std::string shortcutKeys(const HushpaneShortcut& shortcut);

}  // namespace hushpane

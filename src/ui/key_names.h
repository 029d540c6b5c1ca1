#pragma once

#include <array>
#include <string>

#include "input/reveal_modifier.h"
#include "platform/event_monitors.h"

namespace hushpane {

// As combinations are written, by signs and by names.
inline constexpr std::array modifiersInOrder{RevealModifier::control, RevealModifier::option, RevealModifier::shift,
                                             RevealModifier::command};

// What is printed on the key, where the language in use is spoken.
std::string keyName(RevealModifier modifier);
// Such as Ctrl+Alt+S.
std::string keyNames(platform::ModifierFlags modifiers, const std::string& key);

}  // namespace hushpane

#pragma once

#include <array>
#include <string_view>

#include "platform/event_monitors.h"
#include "state/raw_text.h"

namespace hushpane {

// The modifier that lifts the covers while it is held alone.
enum class RevealModifier { option, shift, control, command };

template <>
inline constexpr std::array<std::string_view, 4> rawTexts<RevealModifier>{"option", "shift", "control", "command"};

constexpr platform::ModifierFlags flagOf(RevealModifier modifier) {
  switch (modifier) {
    case RevealModifier::option: return platform::modifier::option;
    case RevealModifier::shift: return platform::modifier::shift;
    case RevealModifier::control: return platform::modifier::control;
    case RevealModifier::command: return platform::modifier::command;
  }
  return 0;
}

// A text that names none is `option`.
constexpr RevealModifier revealModifierFrom(std::string_view text) {
  return fromRawValue<RevealModifier>(text).value_or(RevealModifier::option);
}

}  // namespace hushpane

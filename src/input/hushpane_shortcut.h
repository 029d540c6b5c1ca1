#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/event_monitors.h"
#include "platform/json.h"
#include "state/raw_text.h"

namespace hushpane {

// A global keyboard shortcut: what it does, whether it is in force, and its key.
struct HushpaneShortcut {
  enum class Action { setStandard, toggleCleanDesktop, toggleFocus };

  Action action = Action::setStandard;
  bool enabled = true;
  std::uint16_t keyCode = 0;       // virtual key code by position on the ANSI layout
  std::uint64_t modifiersRaw = 0;  // modifier flags; only shift, control, option and command count

  bool operator==(const HushpaneShortcut&) const = default;

  platform::ModifierFlags modifiers() const;
};

template <>
inline constexpr std::array<std::string_view, 3> rawTexts<HushpaneShortcut::Action>{"setStandard", "toggleCleanDesktop",
                                                                                    "toggleFocus"};

// One for each action, in the order of the actions: Control-Option-S, -A and -F.
const std::vector<HushpaneShortcut>& defaultShortcuts();

// The stored form: an array of objects whose members are the fields, in their order.
platform::Json encodeShortcuts(const std::vector<HushpaneShortcut>& shortcuts);
// Nothing when any of the records lacks a member or has one of another type, an unknown action, or a number that its
// field cannot hold. Members that no field has are passed over.
std::optional<std::vector<HushpaneShortcut>> decodeShortcuts(const platform::Json& json);

}  // namespace hushpane

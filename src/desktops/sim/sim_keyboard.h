#pragma once

#include <cstdint>

#include "platform/keyboard.h"

namespace hushpane::sim {

// What a key of the ANSI keyboard is to a panel, by its virtual key code.
platform::KeyPress keyPressOf(std::uint16_t keyCode, platform::ModifierFlags modifiers);

}  // namespace hushpane::sim

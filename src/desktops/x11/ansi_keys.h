#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace hushpane::x11 {

// The virtual key code of a place on the ANSI keyboard, given by its XKB key name ("AC02" is the place of S), whatever
// the layout writes on it. Nothing for places that have none. Names: The X Keyboard Extension: Protocol Specification,
// and the keycodes files of the X keyboard configuration database.
std::optional<std::uint16_t> virtualKeyCode(std::string_view keyName);

}  // namespace hushpane::x11

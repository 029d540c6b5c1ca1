#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace hushpane::x11 {

// The virtual key code of a key by its position on the ANSI keyboard, whatever the layout writes on it. Nothing for
// keys that have none. The X key code is taken as an evdev one, as all current servers report them.
std::optional<std::uint16_t> virtualKeyCode(xcb_keycode_t keycode);

}  // namespace hushpane::x11

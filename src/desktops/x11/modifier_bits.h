#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>

#include "platform/event_monitors.h"

namespace hushpane::x11 {

struct ModifierBit {
  platform::ModifierFlags flag;
  std::uint16_t mask;  // of the X protocol
};

// The modifiers that people hold, in the usual places of a keyboard map: option is Alt, command is Super.
inline constexpr std::array modifierBits{ModifierBit{platform::modifier::shift, XCB_MOD_MASK_SHIFT},
                                         ModifierBit{platform::modifier::control, XCB_MOD_MASK_CONTROL},
                                         ModifierBit{platform::modifier::option, XCB_MOD_MASK_1},
                                         ModifierBit{platform::modifier::command, XCB_MOD_MASK_4}};

}  // namespace hushpane::x11

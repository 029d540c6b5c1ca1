#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/screen.h"

namespace hushpane::x11 {

// The same number for the same display at the same connector, whenever it is plugged in: an FNV-1a hash of the
// connector's name and the display's EDID block.
platform::DisplayId displayIdOf(std::string_view connector, std::span<const std::uint8_t> edid);

// The product name that an EDID block carries (its descriptor 0xFC); empty when it has none.
std::string productNameOf(std::span<const std::uint8_t> edid);

}  // namespace hushpane::x11

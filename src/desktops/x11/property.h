#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktops/x11/connection.h"

namespace hushpane::x11 {

// The 32-bit values of a property, at most `longest` of them, with one round trip. None when the property is missing or
// of another format, or the window is gone.
std::vector<std::uint32_t> propertyValues(Connection& connection, xcb_window_t window, std::string_view name,
                                          std::uint32_t longest);
// The bytes of a text property, at most 256 of them; none in the same cases.
std::string propertyText(Connection& connection, xcb_window_t window, std::string_view name);
std::optional<std::uint32_t> propertyValue(Connection& connection, xcb_window_t window, std::string_view name);

// The two halves of the same, for asking about many windows at once.
xcb_get_property_cookie_t askProperty(Connection& connection, xcb_window_t window, std::string_view name,
                                      std::uint32_t longest);
std::vector<std::uint32_t> propertyValues(Connection& connection, xcb_get_property_cookie_t cookie);

}  // namespace hushpane::x11

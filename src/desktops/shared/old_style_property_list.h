#pragma once

#include <optional>
#include <string_view>

#include "platform/value.h"

namespace hushpane::desktops {

// A property list in the old-style text form, given in UTF-8: { key = value; } for dictionaries, (a, b) for arrays,
// <0fbd 77> for data, bare or quoted texts with the escapes of C and \Uxxxx, comments of C and C++. All values but the
// containers and data are texts. A list of entries without the outer braces, as in tables of strings, is a dictionary
// too; there an entry without value stands for its own key. Nothing when anything in it is malformed or left over.
std::optional<platform::Value> parseOldStylePropertyList(std::string_view text);

}  // namespace hushpane::desktops

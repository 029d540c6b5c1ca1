#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace hushpane {

// What stands for a place in a text: a text, or a whole number shown in its digits.
using FormatArgument = std::variant<std::string, std::int64_t>;

// Puts the arguments into the places of a text: %@, %d, %i and %u, also with the lengths of C (%ld, %lld), take the
// next one, and with a number (%2$@) that one, counted from 1; %% is one per cent sign. Any argument fits any place. A
// place whose argument is missing is left out, arguments without a place are ignored, and a per cent sign that begins
// no place stays: texts come from translators, so no text can do harm.
std::string formatLocalized(std::string_view format, std::span<const FormatArgument> arguments);

}  // namespace hushpane

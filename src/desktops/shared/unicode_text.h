#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace hushpane::desktops {

enum class ByteOrder { highFirst, lowFirst };

// Nothing when a surrogate stands alone or half a unit is left over.
std::optional<std::string> utf8FromUtf16(std::string_view bytes, ByteOrder order);

// A whole text in UTF-8, or in UTF-16 after a byte-order mark, as UTF-8 without mark; nothing when it is malformed.
std::optional<std::string> decodeText(std::string_view bytes);

// Appends the character in UTF-8; false for what is no character (a surrogate, beyond U+10FFFF).
bool appendUtf8(std::string& text, char32_t character);

}  // namespace hushpane::desktops

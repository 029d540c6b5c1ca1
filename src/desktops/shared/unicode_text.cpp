#include "desktops/shared/unicode_text.h"

#include <glib.h>

#include <cstdint>

namespace hushpane::desktops {

namespace {

constexpr bool isHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

constexpr bool isLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

char32_t unitAt(std::string_view bytes, std::size_t index, ByteOrder order) {
  const auto first = static_cast<std::uint8_t>(bytes[2 * index]);
  const auto second = static_cast<std::uint8_t>(bytes[2 * index + 1]);
  return order == ByteOrder::highFirst ? first << 8 | second : second << 8 | first;
}

}  // namespace

bool appendUtf8(std::string& text, char32_t character) {
  if (isHighSurrogate(character) || isLowSurrogate(character) || character > 0x10FFFF) return false;
  char encoded[6];
  text.append(encoded, static_cast<std::size_t>(g_unichar_to_utf8(character, encoded)));
  return true;
}

std::optional<std::string> utf8FromUtf16(std::string_view bytes, ByteOrder order) {
  if (bytes.size() % 2 != 0) return std::nullopt;
  std::string text;
  for (std::size_t index = 0; index < bytes.size() / 2; ++index) {
    char32_t character = unitAt(bytes, index, order);
    if (isHighSurrogate(character) && index + 1 < bytes.size() / 2) {
      const char32_t low = unitAt(bytes, index + 1, order);
      if (isLowSurrogate(low)) {
        character = 0x10000 + ((character - 0xD800) << 10) + (low - 0xDC00);
        ++index;
      }
    }
    if (!appendUtf8(text, character)) return std::nullopt;
  }
  return text;
}

std::optional<std::string> decodeText(std::string_view bytes) {
  if (bytes.starts_with("\xFE\xFF")) return utf8FromUtf16(bytes.substr(2), ByteOrder::highFirst);
  if (bytes.starts_with("\xFF\xFE")) return utf8FromUtf16(bytes.substr(2), ByteOrder::lowFirst);
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  if (!g_utf8_validate(bytes.data(), static_cast<gssize>(bytes.size()), nullptr)) return std::nullopt;
  return std::string(bytes);
}

}  // namespace hushpane::desktops

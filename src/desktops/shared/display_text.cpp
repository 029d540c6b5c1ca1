#include "desktops/shared/display_text.h"

#include <glib.h>

#include <cstdint>

#include "desktops/shared/unicode_text.h"

namespace hushpane::desktops {

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t nextLine = 0x85;
constexpr char32_t lineSeparator = 0x2028;
constexpr char32_t paragraphSeparator = 0x2029;

// The first letter, taken off the text.
char32_t takeLetter(std::string_view& text) {
  const auto first = static_cast<std::uint8_t>(text.front());
  // GLib answers for a text up to its end or a NUL.
  const gunichar letter =
      first < 0x80 ? first : g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
  const bool isBad = letter == static_cast<gunichar>(-1) || letter == static_cast<gunichar>(-2);
  text.remove_prefix(isBad ? 1 : static_cast<std::size_t>(g_unichar_to_utf8(letter, nullptr)));
  return isBad ? replacement : static_cast<char32_t>(letter);
}

bool isControl(char32_t letter) {
  return letter < 0x20 || (letter >= 0x7F && letter < 0xA0);
}

bool breaksLine(char32_t letter) {
  return letter == '\n' || letter == '\r' || letter == nextLine || letter == lineSeparator ||
         letter == paragraphSeparator;
}

}  // namespace

DisplayText displayText(std::string_view text, std::size_t mostLetters) {
  DisplayText result;
  result.text.reserve(text.size());
  for (std::size_t letters = 0; !text.empty(); ++letters) {
    if (letters == mostLetters) {
      result.text += "…";
      result.isCut = true;
      break;
    }
    const char32_t letter = takeLetter(text);
    if (letter == '\r' && text.starts_with('\n')) continue;
    if (breaksLine(letter))
      result.text += '\n';
    else if (letter == '\t')
      result.text += ' ';
    else if (!isControl(letter))
      appendUtf8(result.text, letter);
  }
  return result;
}

}  // namespace hushpane::desktops

#include "desktops/shared/xml_scalars.h"

#include <glib.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <limits>
#include <memory>

namespace hushpane::desktops::xmlScalar {

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr std::string_view replacement = "\xEF\xBF\xBD";
constexpr double secondsOfDay = 86400;

struct Free {
  void operator()(void* memory) const { g_free(memory); }
};

// The number that fills `text` wholly.
std::optional<unsigned> digits(std::string_view text) {
  unsigned result = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return result;
}

std::string padded(unsigned number, std::size_t width) {
  std::string result = std::to_string(number);
  return std::string(width - std::min(width, result.size()), '0') + result;
}

bool isXmlCharacter(gunichar character) {
  return character >= 0x20 ? character != 0xFFFE && character != 0xFFFF
                           : character == '\t' || character == '\n' || character == '\r';
}

}  // namespace

std::optional<Integer> parseInteger(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
  if (isHexadecimal) text.remove_prefix(2);
  std::uint64_t size = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size, isHexadecimal ? 16 : 10);
  if (error == std::errc::invalid_argument || end != text.data() + text.size()) return std::nullopt;
  constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
  if (error == std::errc::result_out_of_range || size > most + (isNegative ? 1 : 0)) return Integer{};
  return Integer{static_cast<std::int64_t>(isNegative ? 0 - size : size)};
}

std::optional<double> parseReal(std::string_view text) {
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return std::nullopt;
  }
  double result = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return result;
}

std::string writeReal(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value > 0 ? "+infinity" : "-infinity";
  char text[32];
  return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
}

std::optional<platform::Date> parseDate(std::string_view text) {
  constexpr std::string_view form = "dddd-dd-ddTdd:dd:ddZ";
  const auto fits = [](char character, char expected) {
    return expected == 'd' ? character >= '0' && character <= '9' : character == expected;
  };
  if (!std::equal(text.begin(), text.end(), form.begin(), form.end(), fits)) return std::nullopt;
  const auto number = [text](std::size_t at, std::size_t size) { return digits(text.substr(at, size)).value_or(0); };
  const year_month_day day{std::chrono::year(static_cast<int>(number(0, 4))), std::chrono::month(number(5, 2)),
                           std::chrono::day(number(8, 2))};
  const unsigned hour = number(11, 2);
  const unsigned minute = number(14, 2);
  const unsigned second = number(17, 2);
  if (!day.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return platform::Date{sys_days(day).time_since_epoch().count() * secondsOfDay + (hour * 60.0 + minute) * 60.0 +
                        second};
}

std::optional<std::string> writeDate(platform::Date date) {
  constexpr double first = -62135596800;  // 0001-01-01
  constexpr double end = 253402300800;    // 10000-01-01
  if (!(date.secondsSince1970 >= first && date.secondsSince1970 < end)) return std::nullopt;
  const auto whole = std::chrono::seconds(static_cast<std::int64_t>(std::floor(date.secondsSince1970)));
  const auto days = std::chrono::floor<std::chrono::days>(whole);
  const year_month_day day{sys_days(days)};
  const auto rest = static_cast<unsigned>((whole - days).count());
  return padded(static_cast<unsigned>(static_cast<int>(day.year())), 4) + "-" +
         padded(static_cast<unsigned>(day.month()), 2) + "-" + padded(static_cast<unsigned>(day.day()), 2) + "T" +
         padded(rest / 3600, 2) + ":" + padded(rest / 60 % 60, 2) + ":" + padded(rest % 60, 2) + "Z";
}

std::optional<platform::Data> parseData(std::string_view text) {
  std::string packed;
  for (const char character : text) {
    if (g_ascii_isspace(character)) continue;
    if (!g_ascii_isalnum(character) && character != '+' && character != '/' && character != '=') return std::nullopt;
    packed += character;
  }
  const auto padding = packed.find('=');
  if (packed.size() % 4 != 0 || (padding != std::string::npos && packed.size() - padding > 2)) return std::nullopt;
  if (padding != std::string::npos && packed[packed.size() - 1] != '=') return std::nullopt;
  gsize size = 0;
  const std::unique_ptr<guchar, Free> bytes(g_base64_decode(packed.c_str(), &size));
  return platform::Data(bytes.get(), bytes.get() + size);
}

std::string writeData(const platform::Data& data) {
  const std::unique_ptr<gchar, Free> text(g_base64_encode(data.data(), data.size()));
  return text.get();
}

std::string writeText(std::string_view text) {
  std::string result;
  const char* const end = text.data() + text.size();
  for (const char* at = text.data(); at < end;) {
    const gunichar character = g_utf8_get_char_validated(at, end - at);
    const bool isValid = character != static_cast<gunichar>(-1) && character != static_cast<gunichar>(-2);
    const char* const next = isValid ? g_utf8_next_char(at) : at + 1;
    if (!isValid || !isXmlCharacter(character))
      result += replacement;
    else if (character == '&')
      result += "&amp;";
    else if (character == '<')
      result += "&lt;";
    else if (character == '>')
      result += "&gt;";
    else if (character == '\r')
      result += "&#13;";  // a bare one would be read as a line feed
    else
      result.append(at, next);
    at = next;
  }
  return result;
}

}  // namespace hushpane::desktops::xmlScalar

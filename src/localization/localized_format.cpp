#include "localization/localized_format.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace hushpane {

namespace {

constexpr std::string_view lengths = "hlqz";
constexpr std::string_view conversions = "@diu";
constexpr std::size_t mostArguments = 1000;

struct Place {
  std::size_t length = 0;             // of its text, after the per cent sign
  std::optional<std::size_t> number;  // as written, so from 1
};

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

// The place that the text after a per cent sign begins with.
std::optional<Place> placeIn(std::string_view text) {
  Place place;
  std::size_t number = 0;
  while (place.length < text.size() && isDigit(text[place.length]))
    number = std::min(number * 10 + static_cast<std::size_t>(text[place.length++] - '0'), mostArguments);
  if (place.length > 0) {
    if (place.length == text.size() || text[place.length] != '$') return std::nullopt;
    ++place.length;
    place.number = number;
  }
  place.length = std::min(text.find_first_not_of(lengths, place.length), text.size());
  if (place.length == text.size() || conversions.find(text[place.length]) == conversions.npos) return std::nullopt;
  ++place.length;
  return place;
}

std::string textOf(const FormatArgument& argument) {
  const auto* number = std::get_if<std::int64_t>(&argument);
  return number ? std::to_string(*number) : std::get<std::string>(argument);
}

}  // namespace

std::string formatLocalized(std::string_view format, std::span<const FormatArgument> arguments) {
  std::string result;
  std::size_t taken = 0;
  while (!format.empty()) {
    const auto sign = std::min(format.find('%'), format.size());
    result += format.substr(0, sign);
    format.remove_prefix(sign);
    if (format.empty()) break;
    format.remove_prefix(1);
    if (const auto place = placeIn(format)) {
      const auto number = place->number ? *place->number : ++taken;
      if (number >= 1 && number <= arguments.size()) result += textOf(arguments[number - 1]);
      format.remove_prefix(place->length);
    } else {
      result += '%';
      if (format.starts_with('%')) format.remove_prefix(1);
    }
  }
  return result;
}

}  // namespace hushpane

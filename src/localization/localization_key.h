#pragma once

#include <cstddef>
#include <string_view>

namespace hushpane {

// What an interface text is looked up by: the English text itself. Keys are written as "Settings"_key, and only so:
// a test finds them in the sources by that and holds them against the translations.
struct LocalizationKey {
  std::string_view text;
  bool operator==(const LocalizationKey&) const = default;
};

inline namespace literals {
constexpr LocalizationKey operator""_key(const char* text, std::size_t length) {
  return {{text, length}};
}
}  // namespace literals

}  // namespace hushpane

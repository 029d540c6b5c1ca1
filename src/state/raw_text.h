#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace hushpane {

// The texts under which the cases of an enumeration are stored, in case order. Each enumeration that is stored as text
// specialises this; its cases count up from 0.
template <class Enumeration>
inline constexpr std::array<std::string_view, 0> rawTexts{};

template <class Enumeration>
constexpr std::string_view rawValue(Enumeration value) {
  return rawTexts<Enumeration>[static_cast<std::size_t>(value)];
}

// The case stored as exactly that text.
template <class Enumeration>
constexpr std::optional<Enumeration> fromRawValue(std::string_view text) {
  const auto& texts = rawTexts<Enumeration>;
  for (std::size_t index = 0; index < texts.size(); ++index)
    if (texts[index] == text) return static_cast<Enumeration>(index);
  return std::nullopt;
}

}  // namespace hushpane

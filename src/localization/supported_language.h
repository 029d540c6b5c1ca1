#pragma once

#include <array>
#include <string_view>

namespace hushpane {

// A language that the interface can be shown in.
struct SupportedLanguage {
  std::string_view code;     // identifies it, and names its folder of localised resources
  std::string_view endonym;  // its name in itself
  std::string_view flag;     // one emoji shown beside it

  bool operator==(const SupportedLanguage&) const = default;
};

// In the order of the language menu.
extern const std::array<SupportedLanguage, 35> supportedLanguages;

// The one with exactly that code; null when there is none.
const SupportedLanguage* supportedLanguage(std::string_view code);

// Whether the language of a tag is read from right to left: by the script that the tag names, else by the one that the
// language is written in.
bool isRightToLeft(std::string_view tag);

}  // namespace hushpane

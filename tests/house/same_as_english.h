#pragma once

#include <array>
#include <initializer_list>
#include <set>
#include <string>
#include <string_view>

namespace hushpane::tests {

// The program's name, and a text without words.
inline const std::set<std::string> sameEverywhere{"Hushpane", "%@  %@"};

// What is printed on keys: in most countries it is what the English keyboard has.
inline const std::set<std::string> keyNames{"Alt", "Ctrl", "Shift", "Super"};

// Texts that are rightly the same as in English.
struct SameText {
  const char* text;
  std::initializer_list<const char*> codes;
  const char* reason;
};
inline const std::array sameAsEnglish{
    SameText{"Focus", {"ca", "fr", "it", "nl"}, "in their dictionaries, and what people there call such modes"},
    SameText{"Standard", {"da", "de", "fr", "it", "ms", "nb", "ro", "sv"}, "the word in these languages"},
    SameText{"System", {"da", "de", "nb", "sv"}, "the word in these languages"},
    SameText{"Version %@", {"da", "de", "fr", "sv"}, "the word in these languages"},
};

}  // namespace hushpane::tests

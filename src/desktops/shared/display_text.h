#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace hushpane::desktops {

// The text as it can be set: valid UTF-8, U+FFFD in the place of each bad byte; every line break as "\n", tabs as
// spaces, other control characters left out. After `mostLetters` it ends in an ellipsis.
struct DisplayText {
  std::string text;
  bool isCut = false;
};
DisplayText displayText(std::string_view text, std::size_t mostLetters);

}  // namespace hushpane::desktops

#pragma once

#include <string>

namespace hushpane {

// A text that reads from its own first letter on, whichever way the one around it is read: for the symbols of keys.
inline std::string isolated(const std::string& text) {
  return "\u2068" + text + "\u2069";
}

}  // namespace hushpane

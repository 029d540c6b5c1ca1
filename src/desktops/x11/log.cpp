#include "desktops/x11/log.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace hushpane::x11 {

bool isLogging() {
  static const bool asked = [] {
    const char* level = std::getenv("HUSHPANE_LOG");
    return level && std::string_view(level) == "debug";
  }();
  return asked;
}

void logFailure(const std::string& line) {
  if (isLogging()) std::fprintf(stderr, "hushpane: %s\n", line.c_str());
}

}  // namespace hushpane::x11

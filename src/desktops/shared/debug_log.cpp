#include "desktops/shared/debug_log.h"

#include <cstdio>
#include <cstdlib>

namespace hushpane::desktops {

void debugLog(std::string_view line) {
  const char* level = std::getenv("HUSHPANE_LOG");
  if (!level || std::string_view(level) != "debug") return;
  std::fprintf(stderr, "hushpane: %.*s\n", static_cast<int>(line.size()), line.data());
}

}  // namespace hushpane::desktops

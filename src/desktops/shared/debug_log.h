#pragma once

#include <string_view>

namespace hushpane::desktops {

// One line on standard error for people who debug: printed only where HUSHPANE_LOG is "debug". For the main thread.
void debugLog(std::string_view line);

}  // namespace hushpane::desktops

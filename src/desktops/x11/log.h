#pragma once

#include <string>

namespace hushpane::x11 {

// Whether $HUSHPANE_LOG asks for a line about each failure.
bool isLogging();

// One line on standard error, where logging is on.
void logFailure(const std::string& line);

}  // namespace hushpane::x11

#pragma once

#include <optional>
#include <string>

namespace hushpane::x11_tests {

// Why a case cannot work under a window manager, whatever Hushpane does; nothing for the many that can.
std::optional<std::string> whyImpossible(const std::string& combination, const std::string& testCase);

}  // namespace hushpane::x11_tests

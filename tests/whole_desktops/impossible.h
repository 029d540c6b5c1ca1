#pragma once

#include <optional>
#include <string>

namespace hushpane::x11_tests {

// Why a case cannot work in a desktop, whatever Hushpane does; nothing for the many that can.
std::optional<std::string> whyImpossibleIn(const std::string& desktop, const std::string& testCase);

}  // namespace hushpane::x11_tests

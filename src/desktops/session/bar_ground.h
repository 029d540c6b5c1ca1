#pragma once

#include <optional>

namespace hushpane::session {

// Whether the bar of the running desktop is dark, where that is known, whatever its programs are.
std::optional<bool> isBarDark();

}  // namespace hushpane::session

#pragma once

#include <optional>
#include <string_view>

#include "state/veil_mode.h"

namespace hushpane {

// The mode that a URL of the program's own scheme asks for: hushpane://mode/ followed by a user mode. Scheme, host and
// mode are compared byte for byte; of the path only the last component counts, and query and fragment never do.
// Anything else, "reveal" included, asks for nothing. URL syntax: RFC 3986.
std::optional<VeilMode> requestedMode(std::string_view url);

}  // namespace hushpane

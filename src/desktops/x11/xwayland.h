#pragma once

#include "desktops/x11/connection.h"

namespace hushpane::x11 {

// Whether the server is one that shows X programs on a Wayland desktop: it knows nothing of that desktop's own windows,
// and what covers its screen covers them all. Servers nested in a Wayland session are ordinary ones, so the session's
// variables tell nothing.
bool isXwayland(Connection& connection);

}  // namespace hushpane::x11

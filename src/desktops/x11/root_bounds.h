#pragma once

#include "desktops/x11/connection.h"
#include "desktops/x11/pixel_rect.h"

namespace hushpane::x11 {

// All screens together; empty when the server does not answer. Waits for it.
PixelRect rootBounds(Connection& connection);

}  // namespace hushpane::x11

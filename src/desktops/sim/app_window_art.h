#pragma once

#include "desktops/sim/cairo_picture.h"
#include "desktops/sim/sim_window_server.h"

namespace hushpane::sim {

// Draws another application's window: a shadow around it, a title bar of that height, and its contents below.
inline constexpr double titleBarHeight = 30;  // points
void paintAppWindow(const ContextPtr& context, const AppWindow& window);

}  // namespace hushpane::sim

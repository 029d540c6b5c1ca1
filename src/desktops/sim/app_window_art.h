#pragma once

#include "desktops/shared/cairo_picture.h"
#include "desktops/sim/sim_window_server.h"

namespace hushpane::sim {

// Draws another application's window: a shadow around it, a title bar of that height, and its contents below.
inline constexpr double titleBarHeight = 30;  // points
void paintAppWindow(const desktops::ContextPtr& context, const AppWindow& window);

}  // namespace hushpane::sim

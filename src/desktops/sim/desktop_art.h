#pragma once

#include "desktops/sim/cairo_picture.h"

namespace hushpane::sim {

// Draws the desktop beneath all windows: a soft picture, and a column of icons at its right edge.
void paintDesktop(const ContextPtr& context, const platform::Rect& frame);

}  // namespace hushpane::sim

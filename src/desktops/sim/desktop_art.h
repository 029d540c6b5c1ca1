#pragma once

#include "desktops/shared/cairo_picture.h"

namespace hushpane::sim {

// Draws the desktop beneath all windows: the picture where there is one, filling the frame, else a soft sky; and a
// column of icons at the right edge.
void paintDesktop(const desktops::ContextPtr& context, const platform::Rect& frame, const platform::Image* picture);

}  // namespace hushpane::sim

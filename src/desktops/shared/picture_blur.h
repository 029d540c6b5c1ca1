#pragma once

#include "desktops/shared/cairo_picture.h"

namespace hushpane::desktops {

// A copy of the surface, every spot spread by a Gaussian of that standard deviation (in pixels). Beyond its edges the
// picture goes on as at the edge.
SurfacePtr blurred(const SurfacePtr& surface, double deviation);

}  // namespace hushpane::desktops

#pragma once

#include "desktops/shared/cairo_picture.h"
#include "platform/path.h"

namespace hushpane::desktops {

// Adds the outline, `scale` units of the context to the point. False, and nothing added, where it is empty or holds
// what is no finite number.
bool addPath(const ContextPtr& context, const platform::Path& path, double scale);

// The same for an area in pixels: of an upright rectangle the edges come onto whole pixels, at least one apart.
bool addSharpPath(const ContextPtr& context, const platform::Path& path, double scale);

}  // namespace hushpane::desktops

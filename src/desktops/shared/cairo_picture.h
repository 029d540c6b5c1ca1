#pragma once

#include <cairomm/context.h>
#include <cairomm/surface.h>

#include "platform/color.h"
#include "platform/geometry.h"
#include "platform/image.h"

namespace hushpane::desktops {

using SurfacePtr = Cairo::RefPtr<Cairo::ImageSurface>;
using ContextPtr = Cairo::RefPtr<Cairo::Context>;

// A surface that reads the image's own pixels, so the image must outlive it; null when the image holds no picture.
SurfacePtr surfaceOf(const platform::Image& image);
// A copy of what the surface holds.
platform::Image imageOf(const SurfacePtr& surface);

inline void setColor(const ContextPtr& context, const platform::Color& color) {
  context->set_source_rgba(color.red, color.green, color.blue, color.alpha);
}
inline void addRectangle(const ContextPtr& context, const platform::Rect& rect) {
  context->rectangle(rect.x, rect.y, rect.width, rect.height);
}
void addRoundedRectangle(const ContextPtr& context, const platform::Rect& rect, double radius);

}  // namespace hushpane::desktops

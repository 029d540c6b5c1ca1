#pragma once

#include "platform/color.h"
#include "platform/image.h"
#include "platform/status_item.h"

namespace hushpane::desktops {

// The colours of a template image on a ground of which no more is known.
inline constexpr platform::Color inkOnDark{1, 1, 1};
inline constexpr platform::Color inkOnLight{0.14, 0.14, 0.14};

// The template drawn in one colour, as large as it fits a square of so many pixels and in its middle.
platform::Image templatePicture(const platform::TemplateImage& image, int side, const platform::Color& color);
// The same, smaller by a soft rim of the opposite brightness around it, for a ground that may be dark or light.
platform::Image rimmedTemplatePicture(const platform::TemplateImage& image, int side, const platform::Color& color);

}  // namespace hushpane::desktops

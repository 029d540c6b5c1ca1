#pragma once

#include "desktops/session/desktop_background.h"
#include "desktops/shared/pixel_size.h"
#include "desktops/x11/pixel_rect.h"
#include "platform/geometry.h"

namespace hushpane::x11 {

// Where a desktop puts its picture, in pixels of the root window: of a tiled one the place of one tile. It may reach
// beyond the screen. `scale` are the pixels of the screen for one of a picture that is shown as large as it is.
platform::Rect placeOfPicture(session::PicturePlacement placement, desktops::PixelSize picture, const PixelRect& screen,
                              const PixelRect& root, double scale);

}  // namespace hushpane::x11

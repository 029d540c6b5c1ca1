#include "desktops/x11/picture_place.h"

#include <algorithm>

namespace hushpane::x11 {

namespace {

// In the middle of the area, `scale` times as large as it is.
platform::Rect inMiddle(desktops::PixelSize picture, const PixelRect& area, double scale) {
  const double width = picture.width * scale, height = picture.height * scale;
  return {area.x + (area.width - width) / 2, area.y + (area.height - height) / 2, width, height};
}

platform::Rect whole(const PixelRect& area) {
  return {double(area.x), double(area.y), double(area.width), double(area.height)};
}

}  // namespace

platform::Rect placeOfPicture(session::PicturePlacement placement, desktops::PixelSize picture, const PixelRect& screen,
                              const PixelRect& root, double scale) {
  const double across = static_cast<double>(screen.width) / picture.width;
  const double down = static_cast<double>(screen.height) / picture.height;
  switch (placement) {
    case session::PicturePlacement::tiled: return inMiddle(picture, root, scale);
    case session::PicturePlacement::centered: return inMiddle(picture, screen, scale);
    case session::PicturePlacement::scaled: return inMiddle(picture, screen, std::min(across, down));
    case session::PicturePlacement::stretched: return whole(screen);
    case session::PicturePlacement::zoomed: return inMiddle(picture, screen, std::max(across, down));
    case session::PicturePlacement::spanned: return whole(root);
  }
  return whole(screen);
}

}  // namespace hushpane::x11

#include "desktops/x11/drawable_store.h"

#include "desktops/x11/pixel_upload.h"

namespace hushpane::x11 {

xcb_render_picture_t DrawableStore::picture(const Layer& layer, const PixelRect& overlay, const PixelRect& target) {
  const auto& image = *layer.image;
  auto& stored = drawables_[&image];
  stored.isUsed = true;
  const bool fits = stored.surface.hasSize(image.width, image.height);
  if (!fits) stored.surface = render_.makeSurface(SurfaceFormat::argb, image.width, image.height);
  if (!fits || stored.frame != layer.frame) {
    stored.frame = layer.frame;
    pixels_.assign(image.pixels.begin(), image.pixels.end());
    uploadPixels(connection_.get(), stored.surface.pixmap.get(), {0, 0, image.width, image.height}, pixels_);
  }
  const auto picture = stored.surface.picture.get();
  render_.stretch(picture, desktops::drawableStretch(image.width, overlay.width, target.width),
                  desktops::drawableStretch(image.height, overlay.height, target.height));
  return picture;
}

void DrawableStore::freeUnused() {
  std::erase_if(drawables_, [](const auto& entry) { return !entry.second.isUsed; });
  for (auto& entry : drawables_) entry.second.isUsed = false;
}

}  // namespace hushpane::x11

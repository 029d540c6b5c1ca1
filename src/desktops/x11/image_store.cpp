#include "desktops/x11/image_store.h"

#include "desktops/x11/image_scale.h"
#include "desktops/x11/pixel_upload.h"

namespace hushpane::x11 {

xcb_render_picture_t ImageStore::picture(const platform::ImagePtr& image, int width, int height) {
  auto& stored = images_[image.get()];
  stored.isUsed = true;
  if (!stored.surface.hasSize(width, height)) {
    stored.image = image;
    stored.surface = render_.makeSurface(SurfaceFormat::argb, width, height);
    auto pixels = aspectFilled(*image, width, height);
    uploadPixels(connection_.get(), stored.surface.pixmap.get(), {0, 0, width, height}, pixels);
  }
  return stored.surface.picture.get();
}

void ImageStore::freeUnused() {
  std::erase_if(images_, [](const auto& entry) { return !entry.second.isUsed; });
  for (auto& entry : images_) entry.second.isUsed = false;
}

}  // namespace hushpane::x11

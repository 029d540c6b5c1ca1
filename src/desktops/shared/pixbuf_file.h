#pragma once

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <filesystem>
#include <functional>
#include <memory>

#include "desktops/shared/pixel_size.h"

namespace hushpane::desktops {

struct UnrefPixbuf {
  void operator()(GdkPixbuf* pixbuf) const { g_object_unref(pixbuf); }
};
using PixbufPtr = std::unique_ptr<GdkPixbuf, UnrefPixbuf>;

// A picture as it came from its file, perhaps with fewer pixels.
struct DecodedPicture {
  PixbufPtr pixels;     // as they are stored: its orientation tells how to turn them
  PixelSize size;       // of the upright picture in the file
  int orientation = 1;  // of Exif, 1 to 8

  // True when the sides of the stored and of the upright picture change places.
  bool isTurned() const { return orientation > 4; }
};

// Decodes the first picture of a file; no pixels when that fails. `needed` tells for the size of an upright picture how
// many pixels are needed of it: where the file's form allows, no more than up to twice as many each way are decoded.
DecodedPicture decodePictureFile(const std::filesystem::path& file, const std::function<PixelSize(PixelSize)>& needed);

}  // namespace hushpane::desktops

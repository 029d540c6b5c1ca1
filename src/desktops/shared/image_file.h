#pragma once

#include <filesystem>
#include <functional>

#include "desktops/shared/pixel_size.h"
#include "platform/image.h"

namespace hushpane::desktops {

// The picture in a file of a usual still form (JPEG, PNG, TIFF, BMP, SVG, the first frame of GIF, WebP where a decoder
// is installed), turned upright. Null when the file is missing, no regular file, cut, broken, larger than 256 MB, or
// claims more than 64 million pixels; a JPEG file may hold 512 million where fewer are needed. May run on any thread.

// All of it.
platform::ImagePtr decodeImageFile(const std::filesystem::path& file);
// In as many pixels as are needed of it, which is told for the size of the upright picture in the file.
platform::ImagePtr decodeImageFile(const std::filesystem::path& file,
                                   const std::function<PixelSize(PixelSize)>& needed);
// As platform::ImageLoader gives it.
platform::ImagePtr loadImageFile(const std::filesystem::path& file, int width, int height);
platform::ImagePtr scaleImageFile(const std::filesystem::path& file, int width, int height);

}  // namespace hushpane::desktops

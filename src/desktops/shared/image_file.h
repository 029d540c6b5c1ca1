#pragma once

#include <filesystem>

#include "platform/image.h"

namespace hushpane::desktops {

// The picture in a file of any form that gdk-pixbuf knows, turned upright; null when the file is missing, no regular
// file, broken, or larger than 64 MB or 64 million pixels. May run on any thread.
platform::ImagePtr decodeImageFile(const std::filesystem::path& file);

}  // namespace hushpane::desktops

#pragma once

#include <filesystem>

#include "platform/image.h"

namespace hushpane::sim {

// Writes the picture as a PNG file; false when there is nothing to write or it cannot be written.
bool writePng(const platform::Image& image, const std::filesystem::path& file);

}  // namespace hushpane::sim

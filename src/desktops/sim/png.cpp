#include "desktops/sim/png.h"

#include <exception>

#include "desktops/shared/cairo_picture.h"

namespace hushpane::sim {

bool writePng(const platform::Image& image, const std::filesystem::path& file) try {
  const auto surface = desktops::surfaceOf(image);
  if (!surface) return false;
  surface->write_to_png(file.string());
  return true;
} catch (const std::exception&) {
  return false;
}

}  // namespace hushpane::sim

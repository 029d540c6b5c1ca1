#include "tests/x11/screenshot.h"

#include <cairo.h>

namespace hushpane::x11_tests {

void savePng(const Picture& picture, const std::filesystem::path& file) {
  std::vector<std::uint32_t> pixels = picture.pixels;
  cairo_surface_t* surface = cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()),
                                                                 CAIRO_FORMAT_RGB24, picture.width, picture.height,
                                                                 picture.width * static_cast<int>(sizeof(pixels[0])));
  cairo_surface_write_to_png(surface, file.c_str());
  cairo_surface_destroy(surface);
}

void saveForPeople(const Picture& picture, const std::string& name) {
  const char* folder = std::getenv("HUSHPANE_SHOTS");
  if (!folder) return;
  const std::filesystem::path file = std::filesystem::path(folder) / (name + ".png");
  std::filesystem::create_directories(file.parent_path());
  savePng(picture, file);
}

}  // namespace hushpane::x11_tests

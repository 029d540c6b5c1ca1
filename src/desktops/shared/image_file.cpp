#include "desktops/shared/image_file.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <cstdint>
#include <memory>
#include <utility>

namespace hushpane::desktops {

namespace {

constexpr std::uintmax_t mostBytes = 64u << 20;
constexpr std::int64_t mostPixels = 64'000'000;

struct Unref {
  void operator()(GdkPixbuf* pixbuf) const { g_object_unref(pixbuf); }
};
using Pixbuf = std::unique_ptr<GdkPixbuf, Unref>;

bool isWithinLimits(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return false;
  const auto size = std::filesystem::file_size(file, error);
  if (error || size > mostBytes) return false;
  int width = 0;
  int height = 0;
  return gdk_pixbuf_get_file_info(file.c_str(), &width, &height) && width > 0 && height > 0 &&
         std::int64_t{width} * height <= mostPixels;
}

Pixbuf load(const std::filesystem::path& file) {
  const Pixbuf stored(gdk_pixbuf_new_from_file(file.c_str(), nullptr));
  return Pixbuf(stored ? gdk_pixbuf_apply_embedded_orientation(stored.get()) : nullptr);
}

// A channel scaled by alpha, rounded to the nearest.
std::uint32_t scaled(std::uint32_t channel, std::uint32_t alpha) {
  return (channel * alpha + 127) / 255;
}

std::uint32_t premultiplied(const guchar* pixel, bool hasAlpha) {
  const std::uint32_t alpha = hasAlpha ? pixel[3] : 255;
  return alpha << 24 | scaled(pixel[0], alpha) << 16 | scaled(pixel[1], alpha) << 8 | scaled(pixel[2], alpha);
}

platform::ImagePtr imageOf(const GdkPixbuf* pixbuf) {
  auto image = std::make_shared<platform::Image>();
  image->width = gdk_pixbuf_get_width(pixbuf);
  image->height = gdk_pixbuf_get_height(pixbuf);
  image->pixels.reserve(static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height));
  const bool hasAlpha = gdk_pixbuf_get_has_alpha(pixbuf);
  const int step = gdk_pixbuf_get_n_channels(pixbuf);
  const guchar* row = gdk_pixbuf_read_pixels(pixbuf);
  for (int y = 0; y < image->height; ++y, row += gdk_pixbuf_get_rowstride(pixbuf))
    for (int x = 0; x < image->width; ++x) image->pixels.push_back(premultiplied(row + x * step, hasAlpha));
  return image;
}

}  // namespace

platform::ImagePtr decodeImageFile(const std::filesystem::path& file) {
  if (!isWithinLimits(file)) return nullptr;
  const Pixbuf pixbuf = load(file);
  return pixbuf ? imageOf(pixbuf.get()) : nullptr;
}

}  // namespace hushpane::desktops

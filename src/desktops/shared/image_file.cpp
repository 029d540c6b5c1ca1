#include "desktops/shared/image_file.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <exception>
#include <memory>
#include <utility>

#include "desktops/shared/area_scale.h"
#include "desktops/shared/pixbuf_file.h"

namespace hushpane::desktops {

namespace {

constexpr int largestSide = 16384;  // that anybody can ask for

using Needed = std::function<PixelSize(PixelSize)>;

// A channel scaled by alpha, rounded to the nearest.
std::uint32_t scaled(std::uint32_t channel, std::uint32_t alpha) {
  return (channel * alpha + 127) / 255;
}

std::uint32_t opaque(const guchar* pixel) {
  return 0xff000000u | std::uint32_t{pixel[0]} << 16 | std::uint32_t{pixel[1]} << 8 | pixel[2];
}

std::uint32_t premultiplied(const guchar* pixel) {
  const std::uint32_t alpha = pixel[3];
  return alpha << 24 | scaled(pixel[0], alpha) << 16 | scaled(pixel[1], alpha) << 8 | scaled(pixel[2], alpha);
}

PixelRows rowsOf(const GdkPixbuf* pixbuf) {
  const int width = gdk_pixbuf_get_width(pixbuf);
  const bool hasAlpha = gdk_pixbuf_get_has_alpha(pixbuf);
  const std::ptrdiff_t step = gdk_pixbuf_get_n_channels(pixbuf);
  const std::ptrdiff_t stride = gdk_pixbuf_get_rowstride(pixbuf);
  const guchar* first = gdk_pixbuf_read_pixels(pixbuf);
  return {width, gdk_pixbuf_get_height(pixbuf), [=](int row, std::uint32_t* pixels) {
            const guchar* pixel = first + row * stride;
            for (int x = 0; x < width; ++x, pixel += step) pixels[x] = hasAlpha ? premultiplied(pixel) : opaque(pixel);
          }};
}

// Turned and mirrored as an orientation of Exif asks.
platform::Image upright(platform::Image stored, int orientation) {
  if (orientation == 1) return stored;
  const bool isTurned = orientation > 4;
  const bool fromRight = orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
  const bool fromBottom = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
  platform::Image image{isTurned ? stored.height : stored.width, isTurned ? stored.width : stored.height, {}};
  image.pixels.reserve(stored.pixels.size());
  for (int y = 0; y < image.height; ++y)
    for (int x = 0; x < image.width; ++x) {
      int column = isTurned ? y : x, row = isTurned ? x : y;
      if (fromRight) column = stored.width - 1 - column;
      if (fromBottom) row = stored.height - 1 - row;
      image.pixels.push_back(stored.pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(stored.width) +
                                           static_cast<std::size_t>(column)]);
    }
  return image;
}

bool canBeAsked(int width, int height) {
  return width > 0 && height > 0 && width <= largestSide && height <= largestSide;
}

// No smaller than `least` on either side, but never enlarged.
PixelSize filling(PixelSize picture, PixelSize least) {
  const double factor =
      std::max(static_cast<double>(least.width) / picture.width, static_cast<double>(least.height) / picture.height);
  if (factor >= 1) return picture;
  return {std::max(static_cast<int>(std::lround(picture.width * factor)), least.width),
          std::max(static_cast<int>(std::lround(picture.height * factor)), least.height)};
}

}  // namespace

platform::ImagePtr decodeImageFile(const std::filesystem::path& file, const Needed& needed) try {
  const auto picture = decodePictureFile(file, needed);
  if (!picture.pixels) return nullptr;
  const auto size = picture.isTurned() ? needed(picture.size).turned() : needed(picture.size);
  auto stored = areaScaled(rowsOf(picture.pixels.get()), size.width, size.height);
  return std::make_shared<platform::Image>(upright(std::move(stored), picture.orientation));
} catch (const std::exception&) {
  return nullptr;
}

platform::ImagePtr decodeImageFile(const std::filesystem::path& file) {
  return decodeImageFile(file, [](PixelSize picture) { return picture; });
}

platform::ImagePtr loadImageFile(const std::filesystem::path& file, int width, int height) {
  if (!canBeAsked(width, height)) return nullptr;
  return decodeImageFile(file, [=](PixelSize picture) { return filling(picture, {width, height}); });
}

platform::ImagePtr scaleImageFile(const std::filesystem::path& file, int width, int height) {
  if (!canBeAsked(width, height)) return nullptr;
  return decodeImageFile(file, [=](PixelSize) { return PixelSize{width, height}; });
}

}  // namespace hushpane::desktops

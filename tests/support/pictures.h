#pragma once

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

#include "support/temporary_folder.h"

namespace hushpane {

// Writes a picture whose pixels (0xRRGGBBAA) depend on their place, in a form that gdk-pixbuf can write.
inline void writePicture(const std::filesystem::path& file, const char* form, int width, int height,
                         const std::function<std::uint32_t(int x, int y)>& color, bool hasAlpha = false) {
  GdkPixbuf* pixbuf = gdk_pixbuf_new(GDK_COLORSPACE_RGB, hasAlpha, 8, width, height);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      guchar* pixel = gdk_pixbuf_get_pixels(pixbuf) + y * gdk_pixbuf_get_rowstride(pixbuf) + x * (hasAlpha ? 4 : 3);
      for (int channel = 0; channel < (hasAlpha ? 4 : 3); ++channel)
        pixel[channel] = static_cast<guchar>(color(x, y) >> (24 - 8 * channel));
    }
  const bool isWritten = gdk_pixbuf_save(pixbuf, file.c_str(), form, nullptr, nullptr);
  g_object_unref(pixbuf);
  if (!isWritten) throw std::runtime_error("cannot write " + file.string());
}

inline std::string bigEndian16(unsigned number) {
  return {static_cast<char>(number >> 8), static_cast<char>(number)};
}

// A JPEG file with an Exif segment that holds an orientation and, as cameras put it there, a preview.
inline std::string withOrientation(const std::string& jpeg, unsigned orientation, const std::string& preview = {}) {
  const std::string tiff = std::string("MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01", 18) + bigEndian16(orientation) +
                           std::string(6, '\0') + preview;
  const std::string exif = std::string("Exif\0\0", 6) + tiff;
  return jpeg.substr(0, 2) + "\xff\xe1" + bigEndian16(static_cast<unsigned>(exif.size() + 2)) + exif + jpeg.substr(2);
}

}  // namespace hushpane

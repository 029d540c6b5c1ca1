#pragma once

#include <cstdint>
#include <optional>

namespace hushpane::desktops {

// What has to be known of a JPEG file before it is decoded (ISO/IEC 10918-1, Exif 2.3).
struct JpegHeader {
  bool isKeptWhole = false;      // the decoder has to keep all of it: it comes in several scans
  bool isTurned = false;         // upright, its width and height change places
  std::uint64_t scanOffset = 0;  // where the pixels of the first scan begin
};

// Reads with pread(), in a few small steps. Nothing when the file is no such file up to its pixels.
std::optional<JpegHeader> readJpegHeader(int descriptor);

}  // namespace hushpane::desktops

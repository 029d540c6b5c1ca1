#include "desktops/shared/jpeg_header.h"

#include <unistd.h>

#include <array>
#include <string>
#include <string_view>

namespace hushpane::desktops {

namespace {

constexpr int mostSegments = 4096;
constexpr unsigned turnedLeast = 5, turnedMost = 8;  // of the orientations, those that change places

// The bytes of a file from an offset on, as many as there are.
std::string bytesAt(int descriptor, std::uint64_t offset, std::size_t count) {
  std::string bytes(count, '\0');
  const ssize_t got = pread(descriptor, bytes.data(), count, static_cast<off_t>(offset));
  bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  return bytes;
}

// Numbers in bytes; what lies outside reads as 0.
struct Numbers {
  std::string_view bytes;
  bool isLittleEndian = false;

  unsigned byteAt(std::size_t at) const { return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0; }
  unsigned shortAt(std::size_t at) const {
    return isLittleEndian ? byteAt(at + 1) << 8 | byteAt(at) : byteAt(at) << 8 | byteAt(at + 1);
  }
  std::uint32_t longAt(std::size_t at) const {
    return isLittleEndian ? shortAt(at + 2) << 16 | shortAt(at) : shortAt(at) << 16 | shortAt(at + 2);
  }
};

// The orientation in the first directory of a TIFF structure, 0 when there is none.
unsigned orientationIn(std::string_view tiff) {
  constexpr unsigned orientationTag = 0x0112;
  constexpr std::size_t entrySize = 12, valueAt = 8;
  const Numbers numbers{tiff, tiff.starts_with("II")};
  const std::size_t directory = numbers.longAt(4);
  const std::size_t count = numbers.shortAt(directory);
  for (std::size_t index = 0; index < count; ++index) {
    const std::size_t entry = directory + 2 + index * entrySize;
    if (entry + entrySize > tiff.size()) break;
    if (numbers.shortAt(entry) == orientationTag) return numbers.shortAt(entry + valueAt);
  }
  return 0;
}

namespace marker {
constexpr unsigned startOfScan = 0xda, application1 = 0xe1, fill = 0xff;

bool standsAlone(unsigned code) {
  return code == 0x01 || (code >= 0xd0 && code <= 0xd8);
}
bool isFrame(unsigned code) {
  return code >= 0xc0 && code <= 0xcf && code != 0xc4 && code != 0xc8 && code != 0xcc;
}
bool isProgressive(unsigned code) {
  return (code & 3) == 2;
}
}  // namespace marker

class Reader {
 public:
  explicit Reader(int descriptor) : descriptor_(descriptor) {}

  std::optional<JpegHeader> read() {
    if (bytesAt(descriptor_, 0, 2) != "\xff\xd8") return std::nullopt;
    for (int count = 0; count < mostSegments; ++count) {
      constexpr std::size_t enough = 10;  // for what is read of any segment here
      const auto start = bytesAt(descriptor_, offset_, enough);
      const Numbers segment{start};
      if (segment.byteAt(0) != marker::fill) return std::nullopt;
      const unsigned code = segment.byteAt(1);
      const unsigned size = segment.shortAt(2);
      if (code == marker::fill) {
        ++offset_;
        continue;
      }
      if (!marker::standsAlone(code) && size < 2) return std::nullopt;
      take(code, segment, size);
      offset_ += 2 + (marker::standsAlone(code) ? 0 : size);
      if (code == marker::startOfScan) break;
    }
    header_.scanOffset = offset_;
    return components_ > 0 ? std::optional(header_) : std::nullopt;
  }

 private:
  void take(unsigned code, const Numbers& segment, unsigned size) {
    if (marker::isFrame(code)) {
      components_ = segment.byteAt(9);
      header_.isKeptWhole = marker::isProgressive(code);
    }
    if (code == marker::startOfScan && segment.byteAt(4) < components_) header_.isKeptWhole = true;
    if (code == marker::application1 && !orientation_) readOrientation(size);
  }

  void readOrientation(unsigned size) {
    constexpr std::string_view exif("Exif\0\0", 6);
    const auto bytes = bytesAt(descriptor_, offset_ + 4, size - 2);
    if (!bytes.starts_with(exif)) return;
    orientation_ = orientationIn(std::string_view(bytes).substr(exif.size()));
    header_.isTurned = *orientation_ >= turnedLeast && *orientation_ <= turnedMost;
  }

  int descriptor_;
  std::uint64_t offset_ = 0;
  unsigned components_ = 0;
  std::optional<unsigned> orientation_;
  JpegHeader header_;
};

}  // namespace

std::optional<JpegHeader> readJpegHeader(int descriptor) {
  return Reader(descriptor).read();
}

}  // namespace hushpane::desktops

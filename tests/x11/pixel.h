#pragma once

#include <cstdint>
#include <cstdlib>
#include <iomanip>
#include <ostream>

namespace hushpane::x11_tests {

// What one spot of the screen shows: 0xRRGGBB.
struct Pixel {
  std::uint32_t value = 0;

  int red() const { return value >> 16 & 0xff; }
  int green() const { return value >> 8 & 0xff; }
  int blue() const { return value & 0xff; }
  int brightness() const { return red() + green() + blue(); }
  bool operator==(const Pixel&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, Pixel pixel) {
  return stream << '#' << std::hex << std::setw(6) << std::setfill('0') << pixel.value << std::dec;
}

// The pixel beneath black of that alpha.
inline Pixel dimmed(Pixel pixel, double alpha) {
  const auto dim = [&](int channel) { return static_cast<std::uint32_t>(channel * (1 - alpha) + 0.5); };
  return {dim(pixel.red()) << 16 | dim(pixel.green()) << 8 | dim(pixel.blue())};
}

// Equal but for the rounding of `tolerance` blends.
inline bool isNear(Pixel a, Pixel b, int tolerance = 2) {
  return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance &&
         std::abs(a.blue() - b.blue()) <= tolerance;
}

}  // namespace hushpane::x11_tests

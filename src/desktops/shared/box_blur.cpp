#include "desktops/shared/box_blur.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "desktops/shared/pixel_grid.h"

namespace hushpane::desktops {

namespace {

constexpr int passes = 3;

// Everything is counted in 16 bits, which processors do eight at a time: sums of bytes in 1/16.
constexpr int sumBits = 4;
using Count = std::uint16_t;

// Weights in 1/65536: `inner` of each of 2 * reach + 1 pixels, `outer` of the one pixel beyond at either side.
struct Box {
  int reach = 0;  // at most 7
  Count inner = 0;
  Count outer = 0;
};

constexpr Count highHalf(Count a, Count b) {
  return static_cast<Count>(std::uint32_t{a} * b >> 16);
}

Box boxOf(double variance) {
  Box box;
  box.reach = static_cast<int>((std::sqrt(1 + 12 * variance) - 1) / 2);
  const double pixels = 2 * box.reach + 1;
  const double innerSpread = box.reach * (box.reach + 1) * pixels / 3;
  const double beyond = (box.reach + 1.0) * (box.reach + 1.0);
  const double outer = (variance * pixels - innerSpread) / (2 * (beyond - variance));
  const double one = 65535 / (pixels + 2 * outer);
  box.inner = static_cast<Count>(one);
  box.outer = static_cast<Count>(one * outer);
  return box;
}

// One row of means from the sums of its box, and the sums moved on to the next row.
void averageRow(Count* __restrict sums, const std::uint8_t* before, const std::uint8_t* first,
                const std::uint8_t* after, std::uint8_t* __restrict result, std::size_t length, const Box& box) {
  const Count inner = box.inner;
  const Count outer = box.outer;
  for (std::size_t i = 0; i < length; ++i) {
    const auto beyond = static_cast<Count>((before[i] + after[i]) << sumBits);
    const auto mean = static_cast<Count>(highHalf(sums[i], inner) + highHalf(beyond, outer) + (1 << (sumBits - 1)));
    result[i] = static_cast<std::uint8_t>(mean >> sumBits);
    sums[i] = static_cast<Count>(sums[i] + ((after[i] - first[i]) << sumBits));
  }
}

// Every row of `to` the mean of its neighbours in `from`.
void averageRows(const PixelBytes& from, const PixelBytes& to, const Box& box) {
  const auto length = static_cast<std::size_t>(from.stride);
  const auto row = [&from](int index) { return from.first + std::clamp(index, 0, from.height - 1) * from.stride; };
  std::vector<Count> sums(length);
  for (int y = -box.reach; y <= box.reach; ++y)
    for (std::size_t i = 0; i < length; ++i) sums[i] = static_cast<Count>(sums[i] + (row(y)[i] << sumBits));
  for (int y = 0; y < from.height; ++y)
    averageRow(sums.data(), row(y - box.reach - 1), row(y - box.reach), row(y + box.reach + 1),
               to.first + y * to.stride, length, box);
}

// Columns become rows, in tiles that stay in the processor's cache.
template <class Pixel>
void transpose(const PixelBytes& from, const PixelBytes& to) {
  constexpr int tile = 16;
  const auto at = [](const PixelBytes& pixels, int x, int y) {
    return reinterpret_cast<Pixel*>(pixels.first + y * pixels.stride) + x;
  };
  for (int top = 0; top < from.height; top += tile)
    for (int left = 0; left < from.width; left += tile)
      for (int x = left; x < std::min(left + tile, from.width); ++x) {
        Pixel* column = at(to, 0, x);
        for (int y = top; y < std::min(top + tile, from.height); ++y) column[y] = *at(from, x, y);
      }
}

template <class Pixel>
void blur(const PixelBytes& pixels, const Box& box) {
  PixelGrid columns(pixels.height, pixels.width, sizeof(Pixel)), rows(pixels.width, pixels.height, sizeof(Pixel));
  PixelGrid columnsToo = columns, rowsToo = rows;
  transpose<Pixel>(pixels, columns.pixels());
  averageRows(columns.pixels(), columnsToo.pixels(), box);
  averageRows(columnsToo.pixels(), columns.pixels(), box);
  averageRows(columns.pixels(), columnsToo.pixels(), box);
  transpose<Pixel>(columnsToo.pixels(), rows.pixels());
  averageRows(rows.pixels(), rowsToo.pixels(), box);
  averageRows(rowsToo.pixels(), rows.pixels(), box);
  averageRows(rows.pixels(), rowsToo.pixels(), box);
  const auto result = rowsToo.pixels();
  for (int row = 0; row < result.height; ++row)
    std::memcpy(pixels.first + row * pixels.stride, result.first + row * result.stride,
                static_cast<std::size_t>(result.stride));
}

}  // namespace

void boxBlur(const PixelBytes& pixels, double deviation) {
  const double limited = std::min(deviation, widestBoxBlur);
  const Box box = boxOf(limited * limited / passes);
  if (pixels.bytesPerPixel == 4)
    blur<std::uint32_t>(pixels, box);
  else
    blur<std::uint8_t>(pixels, box);
}

}  // namespace hushpane::desktops

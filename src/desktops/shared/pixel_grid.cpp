#include "desktops/shared/pixel_grid.h"

#include <algorithm>
#include <array>

namespace hushpane::desktops {

namespace {

int squaresAlong(int pixels, int factor) {
  return (pixels + factor - 1) / factor;
}

// Adds up `factor` rows from `row` on.
void sumRows(const PixelBytes& pixels, int row, int factor, std::vector<std::uint32_t>& sums) {
  std::ranges::fill(sums, 0);
  for (int y = row; y < row + factor; ++y) {
    const std::uint8_t* bytes = pixels.first + std::min(y, pixels.height - 1) * pixels.stride;
    std::uint32_t* sum = sums.data();
    const std::size_t count = sums.size();
    for (std::size_t i = 0; i < count; ++i) sum[i] += bytes[i];
  }
}

void averageColumns(const std::vector<std::uint32_t>& sums, int factor, const PixelBytes& small, int row) {
  const int channels = small.bytesPerPixel;
  const int last = static_cast<int>(sums.size()) / channels - 1;
  const std::uint32_t count = static_cast<std::uint32_t>(factor) * static_cast<std::uint32_t>(factor);
  std::uint8_t* result = small.first + row * small.stride;
  for (int square = 0; square < small.width; ++square)
    for (int channel = 0; channel < channels; ++channel) {
      std::uint32_t sum = count / 2;
      for (int x = square * factor; x < (square + 1) * factor; ++x)
        sum += sums[static_cast<std::size_t>(std::min(x, last) * channels + channel)];
      result[square * channels + channel] = static_cast<std::uint8_t>(sum / count);
    }
}

// Where a pixel lies between the centres of two squares; `share` of the second in 1/256.
struct Between {
  int first = 0;
  int second = 0;
  std::uint32_t share = 0;
};

Between between(int pixel, int factor, int squares) {
  const int from = 2 * pixel + 1 - factor;  // from the first centre, in half pixels
  const int step = 2 * factor;
  if (from <= 0) return {};
  const int first = std::min(from / step, squares - 1);
  return {first, std::min(first + 1, squares - 1), static_cast<std::uint32_t>((from % step) * 256 / step)};
}

using ExpandedRow = std::vector<std::uint16_t>;  // in 1/256

template <int channels>
void expandColumns(const std::uint8_t* squares, const std::vector<Between>& columns, ExpandedRow& row) {
  std::uint16_t* result = row.data();
  for (const auto [first, second, share] : columns)
    for (int channel = 0; channel < channels; ++channel)
      *result++ = static_cast<std::uint16_t>(squares[first * channels + channel] * (256 - share) +
                                             squares[second * channels + channel] * share);
}

// The rows of squares as wide as the pixels. Keeps the last two.
class ExpandedRows {
 public:
  ExpandedRows(const PixelBytes& small, int factor, int width)
      : small_(small), rows_(2, ExpandedRow(static_cast<std::size_t>(width * small.bytesPerPixel))) {
    columns_.reserve(static_cast<std::size_t>(width));
    for (int x = 0; x < width; ++x) columns_.push_back(between(x, factor, small.width));
  }

  const ExpandedRow& row(int index) {
    const auto place = static_cast<std::size_t>(index % 2);
    if (indices_[place] == index) return rows_[place];
    indices_[place] = index;
    const std::uint8_t* squares = small_.first + index * small_.stride;
    if (small_.bytesPerPixel == 4)
      expandColumns<4>(squares, columns_, rows_[place]);
    else
      expandColumns<1>(squares, columns_, rows_[place]);
    return rows_[place];
  }

 private:
  PixelBytes small_;
  std::vector<Between> columns_;
  std::vector<ExpandedRow> rows_;
  std::array<int, 2> indices_{-1, -1};
};

// In sixteen bits, of which processors do eight numbers at a time.
void blendRows(const ExpandedRow& first, const ExpandedRow& second, std::uint32_t share, std::uint8_t* result) {
  const auto secondWeight = static_cast<std::uint16_t>(share << 8);
  const auto firstWeight = static_cast<std::uint16_t>(0xffff - secondWeight);
  const std::uint16_t* above = first.data();
  const std::uint16_t* below = second.data();
  const std::size_t count = first.size();  // apart: a byte written might be part of the vector
  for (std::size_t i = 0; i < count; ++i) {
    const auto fromAbove = static_cast<std::uint16_t>(std::uint32_t{above[i]} * firstWeight >> 16);
    const auto fromBelow = static_cast<std::uint16_t>(std::uint32_t{below[i]} * secondWeight >> 16);
    result[i] = static_cast<std::uint8_t>(static_cast<std::uint16_t>(fromAbove + fromBelow + 0x80) >> 8);
  }
}

}  // namespace

PixelGrid shrunk(const PixelBytes& pixels, int factor) {
  PixelGrid grid(squaresAlong(pixels.width, factor), squaresAlong(pixels.height, factor), pixels.bytesPerPixel);
  const auto small = grid.pixels();
  std::vector<std::uint32_t> sums(static_cast<std::size_t>(pixels.width * pixels.bytesPerPixel));
  for (int row = 0; row < small.height; ++row) {
    sumRows(pixels, row * factor, factor, sums);
    averageColumns(sums, factor, small, row);
  }
  return grid;
}

void expand(const PixelBytes& small, int factor, const PixelBytes& pixels) {
  ExpandedRows rows(small, factor, pixels.width);
  for (int y = 0; y < pixels.height; ++y) {
    const auto place = between(y, factor, small.height);
    const auto& first = rows.row(place.first);
    blendRows(first, rows.row(place.second), place.share, pixels.first + y * pixels.stride);
  }
}

}  // namespace hushpane::desktops

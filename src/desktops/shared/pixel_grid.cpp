#include "desktops/shared/pixel_grid.h"

#include <algorithm>

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
    for (std::size_t i = 0; i < sums.size(); ++i) sums[i] += bytes[i];
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

// A row between two rows of squares, in 1/256.
void blendRows(const PixelBytes& small, const Between& place, std::vector<std::uint32_t>& line) {
  const std::uint8_t* first = small.first + place.first * small.stride;
  const std::uint8_t* second = small.first + place.second * small.stride;
  for (std::size_t i = 0; i < line.size(); ++i) line[i] = first[i] * (256 - place.share) + second[i] * place.share;
}

// Spreads the blended row over all columns.
template <int channels>
void expandRow(const std::vector<std::uint32_t>& line, const std::vector<Between>& columns, std::uint8_t* result) {
  const std::uint32_t* squares = line.data();
  for (const auto [first, second, share] : columns)
    for (int channel = 0; channel < channels; ++channel) {
      const std::uint32_t left = squares[first * channels + channel];
      const std::uint32_t right = squares[second * channels + channel];
      *result++ = static_cast<std::uint8_t>((left * (256 - share) + right * share + 0x8000) >> 16);
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
  std::vector<Between> columns;
  for (int x = 0; x < pixels.width; ++x) columns.push_back(between(x, factor, small.width));
  std::vector<std::uint32_t> line(static_cast<std::size_t>(small.width * small.bytesPerPixel));
  for (int y = 0; y < pixels.height; ++y) {
    blendRows(small, between(y, factor, small.height), line);
    std::uint8_t* result = pixels.first + y * pixels.stride;
    if (pixels.bytesPerPixel == 4)
      expandRow<4>(line, columns, result);
    else
      expandRow<1>(line, columns, result);
  }
}

}  // namespace hushpane::desktops

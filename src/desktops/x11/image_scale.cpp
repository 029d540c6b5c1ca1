#include "desktops/x11/image_scale.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace hushpane::x11 {

namespace {

using Channels = std::array<float, 4>;

// The source pixels that make one pixel, with their shares.
struct Taps {
  int first = 0;
  std::vector<float> weights;
};

// One axis: `count` pixels made of the stretch of `length` source pixels from `start` on, out of `available`.
std::vector<Taps> tapsOf(int count, double start, double length, int available) {
  const double step = length / count;
  const double reach = std::max(1.0, step);  // a tent at least as wide as the distance of the source pixels
  std::vector<Taps> all(static_cast<std::size_t>(count));
  for (int index = 0; index < count; ++index) {
    const double center = start + (index + 0.5) * step - 0.5;
    auto& taps = all[static_cast<std::size_t>(index)];
    const int first = static_cast<int>(std::ceil(center - reach));
    const int last = static_cast<int>(std::floor(center + reach));
    taps.first = std::clamp(first, 0, available - 1);
    taps.weights.assign(static_cast<std::size_t>(std::clamp(last, 0, available - 1) - taps.first + 1), 0);
    float total = 0;
    for (int at = first; at <= last; ++at) {
      const auto weight = static_cast<float>(std::max(0.0, 1 - std::abs(at - center) / reach));
      taps.weights[static_cast<std::size_t>(std::clamp(at, 0, available - 1) - taps.first)] += weight;
      total += weight;
    }
    for (auto& weight : taps.weights) weight /= total;
  }
  return all;
}

void accumulate(Channels& sum, std::uint32_t pixel, float weight) {
  for (std::size_t channel = 0; channel < sum.size(); ++channel)
    sum[channel] += static_cast<float>((pixel >> (8 * channel)) & 0xff) * weight;
}

std::uint32_t packed(const Channels& sum) {
  std::uint32_t pixel = 0;
  for (std::size_t channel = 0; channel < sum.size(); ++channel)
    pixel |= static_cast<std::uint32_t>(std::clamp(sum[channel] + 0.5f, 0.0f, 255.0f)) << (8 * channel);
  return pixel;
}

// The middle of an image that has the right scale already.
void cut(const platform::Image& image, int width, int height, std::vector<std::uint32_t>& result) {
  const auto left = static_cast<std::size_t>((image.width - width) / 2);
  const auto top = static_cast<std::size_t>((image.height - height) / 2);
  const auto columns = static_cast<std::size_t>(width);
  for (std::size_t row = 0; row < static_cast<std::size_t>(height); ++row) {
    const auto* source = image.pixels.data() + (top + row) * static_cast<std::size_t>(image.width) + left;
    std::copy(source, source + columns, result.data() + row * columns);
  }
}

}  // namespace

std::vector<std::uint32_t> aspectFilled(const platform::Image& image, int width, int height) {
  std::vector<std::uint32_t> result(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  if (image.width <= 0 || image.height <= 0 || result.empty()) return result;
  const double scale = std::min(static_cast<double>(image.width) / width, static_cast<double>(image.height) / height);
  if (scale == 1) {
    cut(image, width, height, result);
    return result;
  }
  const double usedWidth = width * scale;
  const double usedHeight = height * scale;
  const auto columns = tapsOf(width, (image.width - usedWidth) / 2, usedWidth, image.width);
  const auto rows = tapsOf(height, (image.height - usedHeight) / 2, usedHeight, image.height);
  const auto sourceWidth = static_cast<std::size_t>(image.width);
  std::vector<Channels> line(sourceWidth);
  for (std::size_t y = 0; y < rows.size(); ++y) {
    std::ranges::fill(line, Channels{});
    for (std::size_t tap = 0; tap < rows[y].weights.size(); ++tap) {
      const auto* source = image.pixels.data() + (static_cast<std::size_t>(rows[y].first) + tap) * sourceWidth;
      for (std::size_t x = 0; x < sourceWidth; ++x) accumulate(line[x], source[x], rows[y].weights[tap]);
    }
    for (std::size_t x = 0; x < columns.size(); ++x) {
      Channels sum{};
      for (std::size_t tap = 0; tap < columns[x].weights.size(); ++tap) {
        const auto& source = line[static_cast<std::size_t>(columns[x].first) + tap];
        for (std::size_t channel = 0; channel < sum.size(); ++channel)
          sum[channel] += source[channel] * columns[x].weights[tap];
      }
      result[y * columns.size() + x] = packed(sum);
    }
  }
  return result;
}

}  // namespace hushpane::x11

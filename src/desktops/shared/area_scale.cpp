#include "desktops/shared/area_scale.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace hushpane::desktops {

namespace {

// The part of a side that one pixel of the new side covers: whole pixels, but for the first and the last.
struct Span {
  int first = 0;
  int last = 0;
  float firstShare = 0;
  float lastShare = 0;  // unused where there is only one

  float shareOf(int index) const { return index == first ? firstShare : index == last ? lastShare : 1; }
};

std::vector<Span> spansOf(int from, int to) {
  std::vector<Span> spans;
  spans.reserve(static_cast<std::size_t>(to));
  const double step = static_cast<double>(from) / to;
  for (int index = 0; index < to; ++index) {
    const double start = index * step;
    const double end = std::min((index + 1) * step, static_cast<double>(from));
    Span span;
    span.first = std::min(static_cast<int>(start), from - 1);
    span.last = std::clamp(static_cast<int>(std::ceil(end)) - 1, span.first, from - 1);
    span.firstShare = static_cast<float>(std::min<double>(span.first + 1, end) - start);
    span.lastShare = static_cast<float>(end - span.last);
    spans.push_back(span);
  }
  return spans;
}

struct Sums {
  float alpha = 0, red = 0, green = 0, blue = 0;

  void add(std::uint32_t pixel, float share) {
    alpha += static_cast<float>(pixel >> 24) * share;
    red += static_cast<float>(pixel >> 16 & 0xff) * share;
    green += static_cast<float>(pixel >> 8 & 0xff) * share;
    blue += static_cast<float>(pixel & 0xff) * share;
  }
  void add(const Sums& other, float share) {
    alpha += other.alpha * share;
    red += other.red * share;
    green += other.green * share;
    blue += other.blue * share;
  }
  std::uint32_t pixel(float factor) const {
    const auto channel = [factor](float sum) {
      return static_cast<std::uint32_t>(std::clamp(sum * factor + 0.5f, 0.0f, 255.0f));
    };
    return channel(alpha) << 24 | channel(red) << 16 | channel(green) << 8 | channel(blue);
  }
};

// The rows of a picture, narrowed or widened; asked for in their order.
class NarrowedRows {
 public:
  NarrowedRows(const PixelRows& rows, int width)
      : rows_(rows),
        spans_(spansOf(rows.width, width)),
        pixels_(static_cast<std::size_t>(rows.width)),
        sums_(static_cast<std::size_t>(width)) {}

  const std::vector<Sums>& row(int index) {
    if (index == current_) return sums_;
    current_ = index;
    rows_.read(index, pixels_.data());
    for (std::size_t column = 0; column < spans_.size(); ++column) sums_[column] = sumOf(spans_[column]);
    return sums_;
  }

 private:
  Sums sumOf(const Span& span) const {
    const std::uint32_t* pixels = pixels_.data();
    Sums sum;
    sum.add(pixels[span.first], span.firstShare);
    for (int x = span.first + 1; x < span.last; ++x) sum.add(pixels[x], 1);
    if (span.last > span.first) sum.add(pixels[span.last], span.lastShare);
    return sum;
  }

  const PixelRows& rows_;
  std::vector<Span> spans_;
  std::vector<std::uint32_t> pixels_;
  std::vector<Sums> sums_;
  int current_ = -1;
};

}  // namespace

platform::Image areaScaled(const PixelRows& rows, int width, int height) {
  platform::Image image{width, height, {}};
  image.pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  if (width == rows.width && height == rows.height) {
    image.pixels.resize(image.pixels.capacity());
    for (int row = 0; row < height; ++row)
      rows.read(row, image.pixels.data() + static_cast<std::ptrdiff_t>(row) * width);
    return image;
  }
  const auto factor = static_cast<float>(static_cast<double>(width) / rows.width * height / rows.height);
  NarrowedRows narrowed(rows, width);
  std::vector<Sums> line(static_cast<std::size_t>(width));
  for (const auto& span : spansOf(rows.height, height)) {
    std::ranges::fill(line, Sums{});
    for (int row = span.first; row <= span.last; ++row) {
      const auto& sums = narrowed.row(row);
      const float share = span.shareOf(row);
      for (std::size_t column = 0; column < line.size(); ++column) line[column].add(sums[column], share);
    }
    for (const auto& sum : line) image.pixels.push_back(sum.pixel(factor));
  }
  return image;
}

}  // namespace hushpane::desktops

#include "overlay/accent_hue.h"

#include <algorithm>

namespace hushpane {

namespace {

constexpr double greyest = 0.04;  // how far the channels of a grey lie apart at most
constexpr double boost = 3.5;

struct Rgb {
  double red = 0, green = 0, blue = 0;

  double largest() const { return std::max({red, green, blue}); }
  double smallest() const { return std::min({red, green, blue}); }
  double range() const { return largest() - smallest(); }
};

// The channels of all pixels added up: whole numbers, so that the threshold of grey is met exactly.
Rgb sumOf(const platform::Image& picture) {
  Rgb sum;
  for (const auto pixel : picture.pixels) {
    sum.red += pixel >> 16 & 0xff;
    sum.green += pixel >> 8 & 0xff;
    sum.blue += pixel & 0xff;
  }
  return sum;
}

Rgb boosted(const Rgb& mean) {
  const double middle = (mean.largest() + mean.smallest()) / 2;
  const auto channel = [middle](double value) { return std::clamp(middle + (value - middle) * boost, 0.0, 1.0); };
  return {channel(mean.red), channel(mean.green), channel(mean.blue)};
}

double hueOf(const Rgb& color) {
  const double largest = color.largest();
  const double range = color.range();
  if (range <= 0) return 0;
  double sixths = 0;
  if (color.red == largest)
    sixths = (color.green - color.blue) / range;
  else if (color.green == largest)
    sixths = 2 + (color.blue - color.red) / range;
  else
    sixths = 4 + (color.red - color.green) / range;
  return sixths < 0 ? sixths / 6 + 1 : sixths / 6;
}

}  // namespace

std::optional<float> accentHue(const platform::Image& picture) {
  const Rgb sum = sumOf(picture);
  const double full = 255.0 * static_cast<double>(picture.pixels.size());
  if (sum.range() <= greyest * full) return std::nullopt;
  const auto hue = static_cast<float>(hueOf(boosted({sum.red / full, sum.green / full, sum.blue / full})));
  return hue < 1 ? hue : 0;
}

}  // namespace hushpane

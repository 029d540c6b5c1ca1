#include "declarative/looks.h"

#include <algorithm>

namespace hushpane::declarative {

using platform::Color;
using platform::Point;

namespace {

constexpr std::size_t colorLength = 4;
constexpr std::size_t effectStart = 3;   // opacity, saturation, blur
constexpr std::size_t shadowLength = 7;  // colour, radius, offset

void append(Numbers& numbers, const Color& color) {
  for (const double channel : {color.red, color.green, color.blue}) numbers.push_back(channel * color.alpha);
  numbers.push_back(color.alpha);
}

Numbers numbersOf(const Color& color) {
  Numbers numbers;
  append(numbers, color);
  return numbers;
}

Numbers looks(const kinds::Text&, const Environment& environment) {
  return numbersOf(environment.foreground.in(environment.appearance));
}
Numbers looks(const kinds::Symbol&, const Environment& environment) {
  return numbersOf(environment.foreground.in(environment.appearance));
}
Numbers looks(const kinds::Picture&, const Environment& environment) {
  return numbersOf(environment.foreground.in(environment.appearance));
}
Numbers looks(const kinds::Fill& fill, const Environment& environment) {
  if (!fill.paint) return numbersOf(environment.foreground.in(environment.appearance));
  if (const auto* color = std::get_if<AdaptiveColor>(&*fill.paint)) return numbersOf(color->in(environment.appearance));
  const auto& gradient = std::get<AdaptiveGradient>(*fill.paint);
  Numbers numbers = numbersOf(gradient.startColor.in(environment.appearance));
  append(numbers, gradient.endColor.in(environment.appearance));
  return numbers;
}
Numbers looks(const kinds::Stroke& stroke, const Environment& environment) {
  Numbers numbers = numbersOf(stroke.color.in(environment.appearance));
  numbers.push_back(stroke.width);
  return numbers;
}
Numbers looks(const kinds::Divider&, const Environment& environment) {
  return numbersOf(separator.in(environment.appearance));
}
Numbers looks(const kinds::Effect& effect, const Environment& environment) {
  Numbers numbers{effect.opacity, effect.saturation, effect.blurRadius};
  for (const auto& shadow : effect.shadows) {
    append(numbers, shadow.color.in(environment.appearance));
    for (const double number : {shadow.radius, shadow.offset.x, shadow.offset.y}) numbers.push_back(number);
  }
  return numbers;
}
Numbers looks(const kinds::Offset& offset, const Environment&) {
  return {offset.offset.x, offset.offset.y};
}
Numbers looks(const kinds::Scale& scale, const Environment&) {
  return {scale.factor};
}
template <class Other>
Numbers looks(const Other&, const Environment&) {
  return {};
}

double share(double number) {
  return std::clamp(number, 0.0, 1.0);
}

}  // namespace

Numbers looksOf(const Kind& kind, const Environment& environment) {
  return std::visit([&](const auto& known) { return looks(known, environment); }, kind);
}

Color colorFrom(const Numbers& numbers, std::size_t first) {
  const double alpha = share(numbers[first + 3]);
  if (alpha == 0) return {0, 0, 0, 0};
  return {share(numbers[first] / alpha), share(numbers[first + 1] / alpha), share(numbers[first + 2] / alpha), alpha};
}

platform::Paint paintFrom(const Numbers& numbers, const kinds::Fill& fill, const platform::Rect& rect) {
  const auto* gradient = fill.paint ? std::get_if<AdaptiveGradient>(&*fill.paint) : nullptr;
  if (!gradient) return colorFrom(numbers);
  const auto at = [&](UnitPoint point) { return Point{rect.x + point.x * rect.width, rect.y + point.y * rect.height}; };
  return platform::LinearGradient{at(gradient->start), at(gradient->end), colorFrom(numbers),
                                  colorFrom(numbers, colorLength)};
}

double strokeWidthFrom(const Numbers& numbers) {
  return std::max(numbers[colorLength], 0.0);
}

platform::LayerEffect effectFrom(const Numbers& numbers) {
  platform::LayerEffect effect{std::max(numbers[2], 0.0), std::max(numbers[1], 0.0), {}, share(numbers[0])};
  for (std::size_t first = effectStart; first < numbers.size(); first += shadowLength) {
    const Color color = colorFrom(numbers, first);
    if (color.alpha == 0) continue;
    effect.shadows.push_back(
        {color, std::max(numbers[first + colorLength], 0.0), {numbers[first + 5], numbers[first + 6]}});
  }
  return effect;
}

Point offsetFrom(const Numbers& numbers) {
  return {numbers[0], numbers[1]};
}

double scaleFrom(const Numbers& numbers) {
  return std::max(numbers[0], 0.0);
}

}  // namespace hushpane::declarative

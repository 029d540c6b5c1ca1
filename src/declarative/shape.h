#pragma once

#include <array>
#include <variant>

#include "platform/geometry.h"
#include "platform/path.h"

namespace hushpane::declarative {

struct Rectangle {
  bool operator==(const Rectangle&) const = default;
};
struct RoundedRectangle {
  double radius = 0;  // points
  platform::CornerStyle style = platform::CornerStyle::continuous;
  bool operator==(const RoundedRectangle&) const = default;
};
struct Capsule {
  bool operator==(const Capsule&) const = default;
};
struct Circle {  // the largest in the middle
  bool operator==(const Circle&) const = default;
};
// An outline of its own, made for the rectangle that it fills.
struct CustomShape {
  using Numbers = std::array<double, 3>;  // what the function makes of them
  platform::Path (*path)(const platform::Rect& rect, const Numbers& numbers) = nullptr;
  Numbers numbers{};
  bool operator==(const CustomShape&) const = default;
};

using Shape = std::variant<Rectangle, RoundedRectangle, Capsule, Circle, CustomShape>;

platform::Path pathOf(const Shape& shape, const platform::Rect& rect);

// Whether the point is inside the shape that fills the rectangle. Round corners count as circular, a shape of its own
// as its rectangle: this is for pointers.
bool contains(const Shape& shape, const platform::Rect& rect, platform::Point point);

}  // namespace hushpane::declarative

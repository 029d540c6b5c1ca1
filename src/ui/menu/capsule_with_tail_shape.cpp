#include "ui/menu/capsule_with_tail_shape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hushpane {

platform::Path CapsuleWithTailShape::path(const platform::Rect& rect) const {
  constexpr double quarter = std::numbers::pi / 2;
  const double height = std::abs(tailHeight);
  const double radius = (rect.height - height) / 2;
  const double top = rect.y + height;
  const double reach = std::max(rect.width / 2 - radius - tailWidth / 2, 0.0);
  const double tip = rect.x + rect.width / 2 + std::clamp(tailOffset, -reach, reach);
  platform::Path path;
  path.moveTo({rect.x + radius, top})
      .lineTo({tip - tailWidth / 2, top})
      .lineTo({tip, rect.y})
      .lineTo({tip + tailWidth / 2, top})
      .lineTo({rect.right() - radius, top})
      .addArc({rect.right() - radius, top + radius}, radius, -quarter, quarter)
      .lineTo({rect.x + radius, rect.bottom()})
      .addArc({rect.x + radius, top + radius}, radius, quarter, 3 * quarter)
      .close();
  return tailHeight < 0 ? path.transformed(1, -1, {0, rect.y + rect.bottom()}) : path;
}

CapsuleWithTailShape::operator declarative::Shape() const {
  return declarative::CustomShape{[](const platform::Rect& rect, const declarative::CustomShape::Numbers& numbers) {
                                    return CapsuleWithTailShape{numbers[0], numbers[1], numbers[2]}.path(rect);
                                  },
                                  {tailHeight, tailWidth, tailOffset}};
}

}  // namespace hushpane

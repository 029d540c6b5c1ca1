#include "ui/menu/capsule_with_tail_shape.h"

#include <numbers>

namespace hushpane {

platform::Path CapsuleWithTailShape::path(const platform::Rect& rect) const {
  constexpr double quarter = std::numbers::pi / 2;
  const double radius = (rect.height - tailHeight) / 2;
  const double top = rect.y + tailHeight;
  const double middle = rect.x + rect.width / 2;
  platform::Path path;
  path.moveTo({rect.x + radius, top})
      .lineTo({middle - tailWidth / 2, top})
      .lineTo({middle, rect.y})
      .lineTo({middle + tailWidth / 2, top})
      .lineTo({rect.right() - radius, top})
      .addArc({rect.right() - radius, top + radius}, radius, -quarter, quarter)
      .lineTo({rect.x + radius, rect.bottom()})
      .addArc({rect.x + radius, top + radius}, radius, quarter, 3 * quarter)
      .close();
  return path;
}

CapsuleWithTailShape::operator declarative::Shape() const {
  return declarative::CustomShape{[](const platform::Rect& rect, double height, double width) {
                                    return CapsuleWithTailShape{height, width}.path(rect);
                                  },
                                  tailHeight, tailWidth};
}

}  // namespace hushpane

#pragma once

#include <cmath>

#include "platform/geometry.h"

namespace hushpane::declarative {

// From one coordinate system to another around it: scaled, in x perhaps mirrored, then moved.
struct Mapping {
  double scaleX = 1;  // below 0: mirrored
  double scaleY = 1;
  platform::Point offset;

  // Nothing can be seen or met through it.
  bool isFlat() const { return scaleX == 0 || scaleY == 0; }

  platform::Point at(platform::Point point) const { return {point.x * scaleX + offset.x, point.y * scaleY + offset.y}; }
  platform::Rect at(const platform::Rect& rect) const {
    const platform::Point first = at(platform::Point{rect.x, rect.y});
    const double width = rect.width * std::abs(scaleX);
    return {scaleX < 0 ? first.x - width : first.x, first.y, width, rect.height * scaleY};
  }
  // The way back, of one that is not flat.
  Mapping inverted() const { return {1 / scaleX, 1 / scaleY, {-offset.x / scaleX, -offset.y / scaleY}}; }

  // From a system within the inner one.
  Mapping movedBy(platform::Point by) const { return {scaleX, scaleY, at(by)}; }
  Mapping scaledBy(double factor, platform::Point around) const {
    const platform::Point origin{around.x * (1 - factor), around.y * (1 - factor)};
    return {scaleX * factor, scaleY * factor, at(origin)};
  }
  Mapping mirroredWithin(double width) const { return {-scaleX, scaleY, at(platform::Point{width, 0})}; }
};

}  // namespace hushpane::declarative

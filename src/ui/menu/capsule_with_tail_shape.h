#pragma once

#include "declarative/shape.h"

namespace hushpane {

// A capsule with a triangular tail in the middle of its upper edge; the tail is part of the rectangle that it fills.
// Lengths in points.
struct CapsuleWithTailShape {
  double tailHeight = 0;
  double tailWidth = 0;

  platform::Path path(const platform::Rect& rect) const;

  operator declarative::Shape() const;  // NOLINT(google-explicit-constructor): it is one
};

}  // namespace hushpane

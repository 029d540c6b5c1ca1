#pragma once

#include "declarative/shape.h"

namespace hushpane {

// A capsule with a triangular tail on its upper edge; the tail is part of the rectangle that it fills. Lengths in
// points.
struct CapsuleWithTailShape {
  double tailHeight = 0;  // negative: the tail is on the lower edge and points down
  double tailWidth = 0;
  double tailOffset = 0;  // of the tail from the middle; it stays on the straight part of the edge

  platform::Path path(const platform::Rect& rect) const;

  operator declarative::Shape() const;  // NOLINT(google-explicit-constructor): it is one
};

}  // namespace hushpane

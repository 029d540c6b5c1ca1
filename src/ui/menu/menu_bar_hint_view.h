#pragma once

#include "declarative/element.h"

namespace hushpane {

// The bubble that points at the menu-bar item: it breathes and bobs as long as it is shown. Fills what it is offered
// and stands in its middle. Lengths in points.
struct MenuBarHintView {
  double tailHeight = 7;  // negative: the tail points down
  double tailWidth = 12;
  double pillWidth = 150;
  double pillHeight = 39;  // with the tail
  double tailOffset = 0;   // of the tail from the middle

  // What the bubble fills when it stands still.
  declarative::Shape outline() const;

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

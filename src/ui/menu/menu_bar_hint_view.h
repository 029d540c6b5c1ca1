#pragma once

#include "declarative/element.h"

namespace hushpane {

// The bubble that points at the menu-bar item: it breathes and bobs as long as it is shown. Fills what it is offered
// and stands in its middle. Lengths in points.
struct MenuBarHintView {
  double tailHeight = 7;
  double tailWidth = 12;
  double pillWidth = 150;
  double pillHeight = 39;  // with the tail

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

#pragma once

#include "declarative/element.h"

namespace hushpane {

// Two panes, one behind the other; the one behind breathes out of focus and back.
struct WelcomeLogoView {
  declarative::AdaptiveColor purpleTop;
  declarative::AdaptiveColor purpleBottom;
  declarative::AdaptiveColor purpleBorder;

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

#pragma once

#include <functional>
#include <string>

#include "declarative/element.h"

namespace hushpane {

// The one thing to do on a page: a large button filled with the tint.
struct ProminentButton {
  std::string title;
  std::function<void()> action;
  declarative::AdaptiveColor tint;
  double minTitleWidth = 0;  // points

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

#pragma once

#include <functional>

#include "declarative/element.h"

namespace hushpane {

// The page that greets the user once.
struct WelcomeView {
  std::function<void()> onContinue;
  declarative::AdaptiveColor voltGreen;  // of the button

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

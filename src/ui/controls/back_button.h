#pragma once

#include <functional>

#include "declarative/element.h"

namespace hushpane {

// A small round button that leads to the page before.
struct BackButton {
  std::function<void()> action;

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

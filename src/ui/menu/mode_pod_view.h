#pragma once

#include <functional>

#include "declarative/element.h"
#include "state/veil_mode.h"

namespace hushpane {

// The button that chooses one mode, in the mode's own colour.
struct ModePodView {
  VeilMode mode = VeilMode::standard;
  bool isActive = false;
  std::function<void()> action;

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

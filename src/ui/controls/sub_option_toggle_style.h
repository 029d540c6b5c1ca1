#pragma once

#include "ui/controls/toggle.h"

namespace hushpane {

// A row beneath another one: a bar that glows while it is on, and the label. A tap anywhere on the row toggles.
struct SubOptionToggleStyle {
  declarative::AdaptiveColor tint;

  declarative::Element body(const ToggleConfiguration& toggle, declarative::Context& context) const;
};

}  // namespace hushpane

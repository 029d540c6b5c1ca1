#pragma once

#include "ui/controls/toggle.h"

namespace hushpane {

// The label and, at the far end, a switch whose knob slides. A tap anywhere on the row toggles.
struct PellSwitchStyle {
  declarative::AdaptiveColor tint;
  double scale = 1;  // of the switch

  declarative::Element body(const ToggleConfiguration& toggle, declarative::Context& context) const;
};

}  // namespace hushpane

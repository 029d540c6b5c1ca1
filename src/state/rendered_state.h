#pragma once

#include "state/veil_mode.h"

namespace hushpane {

// What the overlays show at this instant. At most one of the flags is true.
struct RenderedState {
  bool showCleanDesktop = false;
  bool showFocus = false;
  VeilMode effectiveMode = VeilMode::standard;
  bool operator==(const RenderedState&) const = default;

  bool showsCover() const { return showCleanDesktop || showFocus; }
};

// The held reveal modifier wins over the chosen mode.
constexpr RenderedState resolveRenderedState(VeilMode userMode, bool isRevealHeld) {
  const VeilMode effective = isRevealHeld ? VeilMode::reveal : userMode;
  return {effective == VeilMode::cleanDesktop, effective == VeilMode::focus, effective};
}

}  // namespace hushpane

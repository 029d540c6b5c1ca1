#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/geometry.h"

namespace hushpane::platform {

using DisplayId = std::uint32_t;

struct Screen {
  Rect frame;                          // points
  std::optional<DisplayId> displayId;  // stays the same across reconnection; some screens have none
  std::string localizedName;
  double scale = 1;  // pixels per point
  bool operator==(const Screen&) const = default;
};

class Screens {
 public:
  virtual ~Screens() = default;

  // The screens of the desktop, the main one first. Costs no round trip. notification::screenParametersDidChange
  // follows every change.
  virtual const std::vector<Screen>& screens() const = 0;

  // The part of a screen that the desktop's own bars leave free, read anew at each call.
  virtual Rect visibleFrame(const Screen& screen) const = 0;

  // Of the screen on which the middle of the area lies, or which is nearest to it; 1 where there is none.
  double scaleOf(const Rect& area) const;
};

}  // namespace hushpane::platform

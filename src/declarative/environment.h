#pragma once

#include <string>

#include "declarative/adaptive_color.h"
#include "platform/text.h"

namespace hushpane::declarative {

// What a view inherits from those around it.
struct Environment {
  Appearance appearance = Appearance::light;
  // Where it changes, what is below is laid out as ever, from its leading edge, and mirrored as a whole; its texts and
  // pictures are not.
  platform::LayoutDirection direction = platform::LayoutDirection::leftToRight;
  std::string locale = "en";  // a language tag
  AdaptiveColor foreground = primary;
  AdaptiveColor accent = systemBlue;  // the desktop's own, for what is chosen or has the keyboard
  bool operator==(const Environment&) const = default;
};

}  // namespace hushpane::declarative

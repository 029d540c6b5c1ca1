#pragma once

#include <string>

#include "declarative/adaptive_color.h"
#include "platform/text.h"

namespace hushpane::declarative {

// What a view inherits from those around it.
struct Environment {
  Appearance appearance = Appearance::light;
  // From right to left, the page is laid out as ever and mirrored as a whole; texts and pictures are not.
  platform::LayoutDirection direction = platform::LayoutDirection::leftToRight;
  std::string locale = "en";  // a language tag
  AdaptiveColor foreground = primary;
  bool operator==(const Environment&) const = default;
};

}  // namespace hushpane::declarative

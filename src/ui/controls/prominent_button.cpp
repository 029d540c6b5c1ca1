#include "ui/controls/prominent_button.h"

namespace hushpane {

using namespace declarative;

namespace {

constexpr double height = 28, titleMargin = 12;  // points
constexpr Shape outline = RoundedRectangle{7};

}  // namespace

Element ProminentButton::body(Context&) const {
  const Element label = text(title, {.font = {.size = 13}, .alignment = platform::TextAlignment::center})
                            .foreground(white)
                            .frame({.minWidth = minTitleWidth})
                            .padding({.top = 4, .leading = titleMargin, .bottom = 4, .trailing = titleMargin})
                            .frame({.minHeight = height})
                            .background(fill(outline, tint))
                            .contentShape(outline);
  return button(action, label).accessibility({.role = AccessibilityRole::button});
}

}  // namespace hushpane

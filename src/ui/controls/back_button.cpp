#include "ui/controls/back_button.h"

#include "ui/localized.h"

namespace hushpane {

using namespace declarative;

Element BackButton::body(Context& context) const {
  const auto isHovered = context.state("isHovered", false);
  const Element circle = fill(Circle{}, primary.opacity(isHovered.get() ? 0.14 : 0.08))
                             .frame({.width = 22, .height = 22})
                             .animation(easeOut(0.12), isHovered.get());
  const Element arrow =
      symbol(
          {.name = "chevron.left", .font = {.size = 10, .weight = platform::FontWeight::semibold}, .isMirrored = true})
          .foreground(secondary);
  const std::string title = localized("Back"_key);
  return button(action, overlaidStack(alignment::center, {circle, arrow}).contentShape(Circle{}))
      .onHover([isHovered](bool inside) { isHovered.set(inside); })
      .tooltip(title)
      .accessibility({.role = AccessibilityRole::button, .label = title});
}

}  // namespace hushpane

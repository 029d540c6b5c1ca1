#include "ui/menu/quit_row.h"

#include <string>

#include "platform/platform.h"
#include "ui/isolated.h"
#include "ui/key_names.h"
#include "ui/localized.h"

namespace hushpane {

using namespace declarative;

namespace {

constexpr double height = 24, margin = 12;  // points
constexpr Shape outline = RoundedRectangle{6};
constexpr platform::Font font{.size = 13};
constexpr AdaptiveColor secondaryOnAccent = white.opacity(0.7);

std::string keysThatQuit() {
  using namespace platform::modifier;
  return localized("%@ or %@"_key, {keyNames(control, "Q"), keyNames(command, "Q")});
}

}  // namespace

Element QuitRow::body(Context& context) const {
  const auto quitHover = context.state("quitHover", false);
  const bool isHovered = quitHover.get();
  const Element title = text(localized("Quit"_key), font).foreground(isHovered ? white : primary);
  const Element keys =
      text(isolated("⌘Q"), font).foreground(isHovered ? secondaryOnAccent : secondary).tooltip(keysThatQuit());
  const Element label = horizontalStack({}, {title, spacer(), keys})
                            .padding({.leading = margin, .trailing = margin})
                            .frame({.height = height, .maxWidth = infinity})
                            .background(fill(outline, isHovered ? context.environment().accent : clear))
                            .contentShape(Rectangle{});
  return button([] { platform::Platform::current().application().terminate(); }, label)
      .onHover([quitHover](bool inside) { quitHover.set(inside); })
      .accessibility({.role = AccessibilityRole::button});
}

}  // namespace hushpane

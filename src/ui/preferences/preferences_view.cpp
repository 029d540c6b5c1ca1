#include "ui/preferences/preferences_view.h"

#include "platform/platform.h"
#include "state/app_router.h"
#include "state/version_text.h"
#include "ui/controls/back_button.h"
#include "ui/localized.h"
#include "ui/preferences/general_section.h"
#include "ui/preferences/outbound_links.h"
#include "ui/preferences/shortcuts_section.h"
#include "ui/preferences/updates_section.h"
#include "ui/stored_changes.h"

namespace hushpane {

using namespace declarative;
using platform::FontWeight;

namespace {

constexpr double width = 360, margin = 12, spacing = 8;  // points
constexpr double captionSize = 10;                       // points

Element header() {
  const BackButton back{[] { AppRouter::shared().setShowingSettings(false); }};
  const Element title = text(localized("Settings"_key), platform::Font{.size = 14, .weight = FontWeight::semibold})
                            .foreground(primary)
                            .accessibility({.role = AccessibilityRole::header});
  return horizontalStack({.spacing = 8}, {back, title});
}

Element faintDivider() {
  return divider().opacity(0.3);
}

Element link(LocalizationKey title, const char* address) {
  const Element label =
      text(localized(title), platform::Font{.size = captionSize, .weight = FontWeight::medium}).foreground(secondary);
  return button([address] { platform::Platform::current().workspace().openURL(address); }, label)
      .accessibility({.role = AccessibilityRole::button});
}

Element footer() {
  const std::string version = versionText(platform::Platform::current().bundle());
  const Element links = verticalStack(
      {.alignment = HorizontalAlignment::leading, .spacing = 4},
      {link("Rate Hushpane"_key, outboundLinks::reviewPage), link("Contact Us"_key, outboundLinks::supportMailbox)});
  return horizontalStack(
             {.alignment = VerticalAlignment::firstTextBaseline},
             {text(localized("Version %@"_key, {version}), platform::Font{.size = captionSize}).foreground(secondary),
              spacer(), links})
      .padding({.top = 4});
}

}  // namespace

Element PreferencesView::body(Context& context) const {
  StoredChanges storedChanges;
  context.observe(storedChanges);
  // Where the page is too high, its sections scroll beneath the header.
  const Element top =
      verticalStack({.alignment = HorizontalAlignment::leading, .spacing = spacing}, {header(), faintDivider()})
          .padding({.top = margin, .leading = margin, .trailing = margin});
  const Element rest =
      verticalStack({.alignment = HorizontalAlignment::leading, .spacing = spacing},
                    {GeneralSection{prefs}, ShortcutsSection{prefs}, UpdatesSection{}, faintDivider(), footer()})
          .padding({spacing, margin, margin, margin})
          .scrolling();
  return verticalStack({.alignment = HorizontalAlignment::leading, .spacing = 0}, {top, rest}).frame({.width = width});
}

}  // namespace hushpane

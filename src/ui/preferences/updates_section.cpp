#include "ui/preferences/updates_section.h"

#include "state/corvane_updater.h"
#include "ui/controls/pell_switch_style.h"
#include "ui/global_accent.h"
#include "ui/localized.h"
#include "ui/preferences/section_card.h"

namespace hushpane {

using namespace declarative;

Element UpdatesSection::body(Context& context) const {
  auto& updater = CorvaneUpdater::shared();
  context.observe(updater);
  const Binding<bool> checks{[&updater] { return updater.automaticallyChecksForUpdates(); },
                             [&updater](bool checks) { updater.setAutomaticallyChecksForUpdates(checks); }};
  const Element checkNow =
      horizontalStack({}, {text(localized("Check for updates now"_key)).foreground(primary), spacer()})
          .contentShape(Rectangle{});
  return sectionCard(
      "UPDATES",
      {toggle(text(localized("Automatically check for updates"_key)), checks, PellSwitchStyle{globalAccent, 1}),
       button([&updater] { updater.checkForUpdates(); }, checkNow).accessibility({.role = AccessibilityRole::button})});
}

}  // namespace hushpane

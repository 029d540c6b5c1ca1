#include "ui/menu/menu_root_view.h"

#include <string>
#include <utility>
#include <vector>

#include "ui/global_accent.h"
#include "ui/key_names.h"
#include "ui/localized.h"
#include "ui/menu/language_menu.h"
#include "ui/menu/mode_pod_view.h"
#include "ui/menu/quit_row.h"
#include "ui/menu/surface_controls_card.h"

namespace hushpane {

using namespace declarative;
using platform::FontWeight;

namespace {

// Points.
constexpr double width = 360, margin = 12, spacing = 12;
constexpr double settingsSide = 24;
constexpr double podSpacing = 10, sectionSpacing = 6, noteMargin = 4, descriptionHeight = 14;
constexpr double rise = -6;  // from which the page comes

constexpr Animation entrance = easeOut(0.18), modeChange = spring(0.5, 0.92);
constexpr TransitionEffect faded{.opacity = 0}, shrunk{.opacity = 0, .scale = 0.97, .anchor = unit::top};

constexpr platform::TextStyle noteStyle{.font = {.size = 11, .italic = true}, .lineLimit = 1, .minimumScale = 0.85};

std::string descriptionOf(VeilMode mode) {
  switch (mode) {
    case VeilMode::standard: return localized("Desktop as usual"_key);
    case VeilMode::cleanDesktop: return localized("Reduce clutter, keep context"_key);
    case VeilMode::focus: return localized("Only the active app"_key);
    case VeilMode::reveal: break;
  }
  return localized("All contents temporarily visible"_key);
}

std::string labelOf(RevealModifier modifier) {
  switch (modifier) {
    case RevealModifier::option: return "⌥ Option";
    case RevealModifier::shift: return "⇧ Shift";
    case RevealModifier::control: return "⌃ Control";
    case RevealModifier::command: break;
  }
  return "⌘ Command";
}

Element note(std::string words) {
  return text(std::move(words), noteStyle)
      .foreground(secondary)
      .padding({.leading = noteMargin, .trailing = noteMargin})
      .frame({.maxWidth = infinity, .alignment = alignment::leading});
}

Element header(const std::function<void()>& onOpenSettings) {
  const Element title =
      text(localized("Hushpane"_key), {.font = {.size = 13, .weight = FontWeight::semibold}, .lineLimit = 1})
          .fixedSize()
          .accessibility({.role = AccessibilityRole::header});
  const Element gear = symbol({.name = "gearshape", .font = {.size = 14, .weight = FontWeight::medium}})
                           .frame({.width = settingsSide, .height = settingsSide})
                           .contentShape(Rectangle{});
  const std::string settingsTitle = localized("Settings"_key);
  const Element settings = button(onOpenSettings, gear)
                               .tooltip(settingsTitle)
                               .accessibility({.role = AccessibilityRole::button, .label = settingsTitle});
  return horizontalStack({}, {title, spacer(8), LanguageMenu{}, settings});
}

Element pods(StateController& state) {
  std::vector<Element> pods;
  for (const VeilMode mode : userModes)
    pods.push_back(ModePodView{.mode = mode,
                               .isActive = state.renderedState().effectiveMode == mode,
                               .action = [&state, mode] { state.setMode(mode); }});
  return horizontalStack({.spacing = podSpacing}, std::move(pods)).padding({.top = 2, .bottom = 2});
}

// What the mode does; another text stands there at once.
Element description(VeilMode mode) {
  return note(descriptionOf(mode))
      .frame({.height = descriptionHeight})
      .fixedSize(false, true)
      .unanimated()
      .transition(faded);
}

// The card belongs to the chosen mode, whether or not its cover is lifted for now.
Element card(const MenuRootView& page) {
  const VeilMode mode = page.state.userMode();
  if (mode == VeilMode::standard) return {};
  return Element(SurfaceControlsCard{mode, page.prefs, globalAccent}).transition(shrunk);
}

Element reminder(RevealModifier modifier) {
  return note(localized("Hold %@ to Reveal"_key, {labelOf(modifier)})).tooltip(keyName(modifier));
}

Element modeSection(const MenuRootView& page) {
  return verticalStack({.alignment = HorizontalAlignment::leading, .spacing = sectionSpacing},
                       {pods(page.state), description(page.state.renderedState().effectiveMode), card(page),
                        reminder(page.state.revealMonitor().modifier)});
}

}  // namespace

Element MenuRootView::body(Context& context) const {
  context.observe(state);
  const auto hasAppeared = context.state("hasAppeared", false);
  return verticalStack({.alignment = HorizontalAlignment::leading, .spacing = spacing},
                       {header(onOpenSettings), divider(), modeSection(*this), divider(), QuitRow{}})
      .padding(margin)
      .frame({.width = width})
      .animation(modeChange, state.userMode())
      .opacity(hasAppeared.get() ? 1 : 0)
      .offset(0, hasAppeared.get() ? 0 : rise)
      .animation(entrance, hasAppeared.get())
      .onAppear([hasAppeared] { hasAppeared.set(true); });
}

}  // namespace hushpane

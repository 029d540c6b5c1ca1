#include "ui/preferences/display_rows.h"

#include <cstddef>
#include <string>
#include <utility>

#include "state/state_controller.h"
#include "ui/controls/sub_option_toggle_style.h"
#include "ui/global_accent.h"

namespace hushpane {

using namespace declarative;

namespace {

struct Display {
  platform::DisplayId id = 0;
  std::string name;
};

// In the order of the screens; those without a number cannot be told apart.
std::vector<Display> connectedDisplays() {
  std::vector<Display> displays;
  std::size_t position = 0;
  for (const auto& screen : platform::Platform::current().screens().screens()) {
    ++position;
    if (!screen.displayId) continue;
    displays.push_back({*screen.displayId,
                        screen.localizedName.empty() ? "Display " + std::to_string(position) : screen.localizedName});
  }
  return displays;
}

void enable(platform::DisplayId display, bool isEnabled) {
  auto& state = StateController::shared();
  auto enablement = state.overlayManager().displayEnablement();
  enablement[display] = isEnabled;
  state.overlayManager().setDisplayEnablement(std::move(enablement));
  state.saveDisplayEnablement();
  state.applyRenderedState(false);
  state.objectWillChange();
}

Element rowOf(const Display& display) {
  const auto isOn = [id = display.id] {
    return isEnabled(StateController::shared().overlayManager().displayEnablement(), id);
  };
  const auto set = [id = display.id](bool isEnabled) { enable(id, isEnabled); };
  const Element name = text(display.name, {.font = {.size = 13}, .lineLimit = 1}).foreground(secondary);
  return toggle(name, Binding<bool>{isOn, set}, SubOptionToggleStyle{globalAccent}).id(display.id);
}

}  // namespace

std::vector<Element> displayRows() {
  std::vector<Element> rows;
  const auto displays = connectedDisplays();
  if (displays.size() < 2) return rows;
  for (const auto& display : displays) rows.push_back(rowOf(display));
  return rows;
}

}  // namespace hushpane

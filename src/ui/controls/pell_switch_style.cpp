#include "ui/controls/pell_switch_style.h"

namespace hushpane {

namespace {

using namespace declarative;

// Points, at scale 1.
constexpr double trackWidth = 34, trackHeight = 20;
constexpr double knobDiameter = 14;
constexpr double knobOffset = 7;  // from the middle of the track

constexpr Animation slide = spring(0.3, 0.7);

Element track(bool isOn, const PellSwitchStyle& style) {
  return fill(Capsule{}, isOn ? style.tint.opacity(0.35) : primary.opacity(0.08))
      .overlay(stroke(Capsule{}, isOn ? clear : primary.opacity(0.1), 1))
      .frame({.width = trackWidth * style.scale, .height = trackHeight * style.scale});
}

Element knob(bool isOn, const PellSwitchStyle& style) {
  const double diameter = knobDiameter * style.scale;
  const double offset = knobOffset * style.scale;
  return fill(Circle{}, isOn ? style.tint : primary.opacity(0.25))
      .frame({.width = diameter, .height = diameter})
      .offset(isOn ? offset : -offset, 0);
}

}  // namespace

Element PellSwitchStyle::body(const ToggleConfiguration& toggle, Context& context) const {
  const bool isOn = toggle.isOn.get();
  const auto flip = [binding = toggle.isOn, updates = context.updates()] {
    updates.withAnimation(slide, [&] { binding.set(!binding.get()); });
  };
  const Element control = overlaidStack(alignment::center, {track(isOn, *this), knob(isOn, *this)}).saturation(0.65);
  return horizontalStack({}, {toggle.label.foreground(primary), spacer(), control})
      .padding({.top = 2, .bottom = 2})
      .contentShape(Rectangle{})
      .onTap(flip)
      .accessibility({.role = AccessibilityRole::toggle, .isOn = isOn});
}

}  // namespace hushpane

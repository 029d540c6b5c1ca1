#include "ui/controls/sub_option_toggle_style.h"

namespace hushpane {

namespace {

using namespace declarative;

constexpr double barWidth = 3.5, barHeight = 18;  // points
constexpr double glowRadius = 5;
constexpr Animation glow = easeInOut(0.35);

Element bar(bool isOn, const AdaptiveColor& tint) {
  return fill(Capsule{}, isOn ? tint : primary.opacity(0.15))
      .frame({.width = barWidth, .height = barHeight})
      .shadow(isOn ? tint.opacity(0.65) : tint.opacity(0), glowRadius)
      .animation(glow, isOn);
}

}  // namespace

Element SubOptionToggleStyle::body(const ToggleConfiguration& toggle, Context& context) const {
  const bool isOn = toggle.isOn.get();
  const auto flip = [binding = toggle.isOn, updates = context.updates()] {
    updates.withAnimation(glow, [&] { binding.set(!binding.get()); });
  };
  return horizontalStack({.spacing = 10}, {bar(isOn, tint), toggle.label, spacer()})
      .padding({.top = 2, .bottom = 2})
      .contentShape(Rectangle{})
      .onTap(flip)
      .accessibility({.role = AccessibilityRole::toggle, .isOn = isOn});
}

}  // namespace hushpane

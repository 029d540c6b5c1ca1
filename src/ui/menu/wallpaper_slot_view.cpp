#include "ui/menu/wallpaper_slot_view.h"

namespace hushpane {

namespace {

using namespace declarative;

constexpr Shape outline = RoundedRectangle{8};
constexpr double discDiameter = 18, margin = 5;  // points
constexpr Animation selection = easeOut(0.15);
constexpr Animation hover = easeOut(0.12);
constexpr TransitionEffect shrunk{.opacity = 0, .scale = 0.75, .anchor = unit::topTrailing};

Element tile(const WallpaperSlotView& slot) {
  const Element border =
      slot.isSelected ? stroke(outline, slot.accent.opacity(0.8), 1.8) : stroke(outline, primary.opacity(0.1), 1);
  return overlaidStack(alignment::center, {fill(outline, primary.opacity(0.05)), slot.content})
      .frame({.height = WallpaperSlotView::height, .maxWidth = infinity})
      .clip(outline)
      .overlay(border)
      .contentShape(outline)
      .onTap(slot.onTap)
      .accessibility({.role = AccessibilityRole::button, .isOn = slot.isSelected});
}

Element removeButton(const std::function<void()>& remove) {
  const Element minus = symbol({.name = "minus", .font = {.size = 9, .weight = platform::FontWeight::bold}});
  const Element disc = fill(Circle{}, windowBackground.opacity(0.85))
                           .frame({.width = discDiameter, .height = discDiameter})
                           .overlay(minus.foreground(primary))
                           .contentShape(Circle{});
  return button(remove, disc).padding(margin).transition(shrunk);
}

}  // namespace

Element WallpaperSlotView::body(Context& context) const {
  const auto isHovered = context.state("isHovered", false);
  const bool showsRemove = onRemove && isHovered.get();
  return overlaidStack(alignment::topTrailing, {tile(*this), showsRemove ? removeButton(onRemove) : Element()})
      .onHover([isHovered](bool inside) { isHovered.set(inside); })
      .animation(selection, isSelected)
      .animation(hover, isHovered.get());
}

}  // namespace hushpane

#include "ui/menu/menu_bar_hint_view.h"

#include "localization/localization_key.h"
#include "ui/global_accent.h"
#include "ui/localized.h"
#include "ui/menu/capsule_with_tail_shape.h"

namespace hushpane {

using namespace declarative;

namespace {

constexpr Animation breath = repeatingForever(easeInOut(1.6));
constexpr Animation drift = repeatingForever(easeInOut(3));
constexpr double breathedOut = 0.78;  // opacity
constexpr double lowered = 1;         // points

// Hides what is behind it almost wholly.
constexpr AdaptiveColor ultraThickMaterial{{0.96, 0.96, 0.96, 0.94}, {0.18, 0.18, 0.18, 0.94}};

}  // namespace

Shape MenuBarHintView::outline() const {
  return CapsuleWithTailShape{tailHeight, tailWidth, tailOffset};
}

Element MenuBarHintView::body(Context& context) const {
  const auto breathing = context.state("breathing", false);
  const auto drifting = context.state("drifting", false);
  const auto begin = [breathing, drifting, updates = context.updates()] {
    updates.withAnimation(breath, [breathing] { breathing.set(true); });
    updates.withAnimation(drift, [drifting] { drifting.set(true); });
  };
  const Element bubble = fill(outline(), ultraThickMaterial)
                             .shadows({{opaqueBlack.opacity(0.22), 6, {0, 2}}, {globalAccent.opacity(0.22), 14, {}}})
                             .overlay(stroke(outline(), primary.opacity(0.18), 0.8))
                             .frame({.width = pillWidth, .height = pillHeight});
  const Element words = text(localized("Hushpane is here"_key),
                             platform::Font{.size = 12, .weight = platform::FontWeight::medium, .tracking = 0.2})
                            .offset(0, tailHeight / 2);
  return overlaidStack({}, {bubble, words})
      .frame({.maxWidth = infinity, .maxHeight = infinity})
      .opacity(breathing.get() ? 1 : breathedOut)
      .offset(0, drifting.get() ? 0 : lowered)
      .onAppear(begin);
}

}  // namespace hushpane

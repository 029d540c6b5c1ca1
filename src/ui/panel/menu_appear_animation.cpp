#include "ui/panel/menu_appear_animation.h"

namespace hushpane {

using namespace declarative;

namespace {

constexpr Animation entrance = spring(0.26, 0.82);
constexpr double smallScale = 0.97;

}  // namespace

Element MenuAppearAnimation::body(Context& context) const {
  const auto visible = context.state("visible", false);
  const auto enter = [visible, updates = context.updates()] {
    updates.withAnimation(entrance, [visible] { visible.set(true); });
  };
  return content.opacity(visible.get() ? 1 : 0)
      .scale(visible.get() ? 1 : smallScale, unit::top)
      .onAppear(enter)
      .onDisappear([visible] { visible.set(false); });
}

}  // namespace hushpane

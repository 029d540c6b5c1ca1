#include "platform/panel.h"

#include <utility>

namespace hushpane::platform {

Panel::Panel(Animator& animator, const PanelConfiguration& configuration, PanelContents& contents)
    : animator_(animator), configuration_(configuration), contents_(contents) {}

void Panel::setFrame(const Rect& frame) {
  if (std::exchange(frame_, frame) != frame) frameChanged();
}

void Panel::setOutline(Path outline, Color ground) {
  if (outline == outline_ && ground == ground_) return;
  outline_ = std::move(outline);
  ground_ = ground;
  outlineChanged();
}

Rect Panel::outlineFrame() const {
  const Rect bounds = outline_.controlBounds();
  return {frame_.x + bounds.x, frame_.y + bounds.y, bounds.width, bounds.height};
}

bool Panel::isMetAt(Point point) const {
  return isVisible_ && !configuration_.ignoresMouseEvents && outlineFrame().contains(point);
}

void Panel::setAlpha(double alpha) {
  const bool differs = alpha != alpha_.presentation();
  alpha_.set(alpha);
  if (differs) alphaChanged();
}

void Panel::animateAlpha(double alpha, Animation animation, std::function<void()> completion) {
  alpha_.animate(
      animator_, alpha, animation, [this] { alphaChanged(); }, std::move(completion));
}

void Panel::orderFront() {
  isVisible_ = true;
  orderChanged();
}

void Panel::orderOut() {
  if (std::exchange(isVisible_, false)) orderChanged();
}

}  // namespace hushpane::platform

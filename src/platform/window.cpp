#include "platform/window.h"

#include <utility>

namespace hushpane::platform {

Window::Window(Animator& animator, const Rect& frame, const WindowConfiguration& configuration)
    : animator_(animator),
      configuration_(configuration),
      frame_(frame),
      contentView_(animator, [this] { contentChanged(); }) {}

void Window::setFrame(const Rect& frame) {
  if (std::exchange(frame_, frame) != frame) frameChanged();
}

void Window::setLevel(int level) {
  if (std::exchange(level_, level) == level) return;
  place_ = Place::front;
  orderChanged();
}

void Window::setAlpha(double alpha) {
  const bool differs = alpha != alpha_.presentation();
  alpha_.set(alpha);
  if (differs) alphaChanged();
}

void Window::animateAlpha(double alpha, Animation animation, std::function<void()> completion) {
  alpha_.animate(
      animator_, alpha, animation, [this] { alphaChanged(); }, std::move(completion));
}

void Window::orderFront() {
  isVisible_ = true;
  place_ = Place::front;
  orderChanged();
}

void Window::orderBelow(WindowNumber sibling) {
  const bool differs = !isVisible_ || place_ != Place::below || sibling_ != sibling;
  isVisible_ = true;
  place_ = Place::below;
  sibling_ = sibling;
  if (differs) orderChanged();
}

void Window::orderOut() {
  if (std::exchange(isVisible_, false)) orderChanged();
}

}  // namespace hushpane::platform

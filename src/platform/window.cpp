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
  place_ = Place::front;
  setVisible(true);
}

void Window::orderBelow(WindowNumber sibling) {
  if (isVisible_ && place_ == Place::below && sibling_ == sibling) return;
  place_ = Place::below;
  sibling_ = sibling;
  setVisible(true);
}

void Window::orderOut() {
  if (isVisible_) setVisible(false);
}

void Window::setVisible(bool visible) {
  const bool differs = std::exchange(isVisible_, visible) != visible;
  orderChanged();
  if (differs) visibility_.forEach([](const auto& observer) { observer(); });
}

}  // namespace hushpane::platform

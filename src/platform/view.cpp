#include "platform/view.h"

#include <utility>

namespace hushpane::platform {

View::View(Animator& animator, std::function<void()> changed) : animator_(animator), changed_(std::move(changed)) {}

View& View::addSubview() {
  subviews_.push_back(std::make_unique<View>(animator_, changed_));
  return *subviews_.back();
}

void View::setHidden(bool hidden) {
  if (std::exchange(isHidden_, hidden) != hidden) changed_();
}

void View::setAlpha(double alpha) {
  const bool differs = alpha != alpha_.presentation();
  alpha_.set(alpha);
  if (differs) changed_();
}

void View::animateAlpha(double alpha, Animation animation, std::function<void()> completion) {
  alpha_.animate(animator_, alpha, animation, changed_, std::move(completion));
}

void View::setMaterial(EffectMaterial material) {
  if (std::exchange(material_, material) != material) changed_();
}

std::optional<Color> View::layerColor() const {
  return hasColor_ ? std::optional(color_.model()) : std::nullopt;
}

std::optional<Color> View::presentationLayerColor() const {
  return hasColor_ ? std::optional(color_.presentation()) : std::nullopt;
}

void View::setLayerColor(Color color) {
  hasColor_ = true;
  color_.set(color);
  changed_();
}

void View::animateLayerColor(Color color, Animation animation) {
  hasColor_ = true;
  color_.animate(animator_, color, animation, changed_);
}

void View::setContents(ImagePtr contents) {
  const bool wasFading = fade_.isRunning();
  fade_.set(1);
  outgoing_.reset();
  if (contents == contents_ && !wasFading) return;
  contents_ = std::move(contents);
  changed_();
}

void View::setContents(ImagePtr contents, Animation fade) {
  if (contents == contents_) return;
  outgoing_ = std::exchange(contents_, std::move(contents));
  fade_.set(0);
  fade_.animate(animator_, 1, fade, changed_, [this] { outgoing_.reset(); });
  changed_();
}

void View::presentDrawable(ImagePtr drawable) {
  drawable_ = std::move(drawable);
  ++drawableFrame_;
  changed_();
}

}  // namespace hushpane::platform

#include "declarative/element.h"

namespace hushpane::declarative {

struct Element::Data {
  Kind kind;
  std::vector<Element> children;
};

Element::Element(Kind kind, std::vector<Element> children)
    : data_(std::make_shared<const Data>(Data{std::move(kind), std::move(children)})) {}
Element::Element(kinds::Component component) : Element(Kind(std::move(component)), {}) {}

const Kind& Element::kind() const {
  return data_->kind;
}
const std::vector<Element>& Element::children() const {
  return data_->children;
}
// Nothing stays nothing, whatever is said of it.
Element Element::in(Kind modifier) const {
  return isEmpty() ? Element() : Element(std::move(modifier), {*this});
}
Element Element::background(Element behind, Alignment alignment) const {
  return isEmpty() ? Element()
                   : Element(kinds::Layered{kinds::Layered::Side::behind, alignment}, {*this, std::move(behind)});
}
Element Element::overlay(Element inFront, Alignment alignment) const {
  return isEmpty() ? Element()
                   : Element(kinds::Layered{kinds::Layered::Side::inFront, alignment}, {*this, std::move(inFront)});
}

Element Element::padding(double all) const {
  return padding({all, all, all, all});
}

Element Element::padding(Insets insets) const {
  return in(kinds::Padding{insets});
}

Element Element::frame(kinds::Frame frame) const {
  return in(std::move(frame));
}

Element Element::fixedSize(bool horizontal, bool vertical) const {
  return in(kinds::FixedSize{horizontal, vertical});
}

Element Element::scrolling() const {
  return in(kinds::Scrolling{});
}

Element Element::foreground(AdaptiveColor color) const {
  return in(kinds::Foreground{color});
}

Element Element::opacity(double opacity) const {
  return in(kinds::Effect{.opacity = opacity, .shadows = {}});
}

Element Element::saturation(double saturation) const {
  return in(kinds::Effect{.saturation = saturation, .shadows = {}});
}

Element Element::blur(double radius) const {
  return in(kinds::Effect{.blurRadius = radius, .shadows = {}});
}

Element Element::shadows(std::vector<AdaptiveShadow> shadows) const {
  return in(kinds::Effect{.shadows = std::move(shadows)});
}

Element Element::offset(double x, double y) const {
  return in(kinds::Offset{{x, y}});
}

Element Element::scale(double factor, UnitPoint anchor) const {
  return in(kinds::Scale{factor, anchor});
}

Element Element::clip(Shape shape) const {
  return in(kinds::Clip{shape});
}

Element Element::environment(std::function<void(Environment&)> change) const {
  return in(kinds::EnvironmentChange{std::move(change)});
}

Element Element::contentShape(Shape shape) const {
  return in(kinds::ContentShape{shape});
}

Element Element::onTap(std::function<void()> action) const {
  return in(kinds::Tap{std::move(action)});
}

Element Element::onHover(std::function<void(bool)> action) const {
  return in(kinds::Hover{std::move(action)});
}

Element Element::onFocus(std::function<void(bool)> action) const {
  return in(kinds::Focus{std::move(action)});
}

Element Element::focusGroup(FocusGroupStyle style) const {
  return in(kinds::FocusGroup{style});
}

Element Element::onAppear(std::function<void()> action) const {
  return in(kinds::Appearing{std::move(action), {}});
}

Element Element::onDisappear(std::function<void()> action) const {
  return in(kinds::Appearing{{}, std::move(action)});
}

Element Element::onChange(Equatable value, std::function<void()> action) const {
  return in(kinds::Change{std::move(value), std::move(action)});
}

Element Element::tooltip(std::string text) const {
  return in(kinds::Tooltip{std::move(text)});
}

Element Element::accessibility(kinds::Accessibility accessibility) const {
  return in(std::move(accessibility));
}

Element Element::id(Equatable id) const {
  return in(kinds::Identified{std::move(id)});
}

Element Element::animation(Animation animation, Equatable value) const {
  return in(kinds::Animated{animation, std::move(value)});
}

Element Element::unanimated() const {
  return in(kinds::Unanimated{});
}

Element Element::transition(Transition transition) const {
  return in(kinds::Transitioned{std::move(transition)});
}

Element Element::transition(TransitionEffect both) const {
  return transition(Transition{both, both});
}

Element Element::matchedGeometry(MatchedGeometryId id) const {
  return in(kinds::MatchedGeometry{std::move(id)});
}

Element text(std::string text, platform::TextStyle style) {
  return Element(kinds::Text{std::move(text), style}, {});
}

Element text(std::string text, platform::Font font) {
  return declarative::text(std::move(text), platform::TextStyle{.font = font});
}

Element picture(platform::ImagePtr image) {
  return image ? Element(kinds::Picture{std::move(image)}, {}) : Element();
}

Element symbol(kinds::Symbol symbol) {
  return Element(symbol, {});
}

Element fill(Shape shape, std::optional<AdaptivePaint> paint) {
  return Element(kinds::Fill{shape, paint}, {});
}

Element stroke(Shape shape, AdaptiveColor color, double width, double inset) {
  return Element(kinds::Stroke{shape, color, width, inset}, {});
}

Element spacer(double minLength) {
  return Element(kinds::Spacer{minLength}, {});
}

Element divider() {
  return Element(kinds::Divider{}, {});
}

Element verticalStack(kinds::VerticalStack stack, std::vector<Element> children) {
  return Element(stack, std::move(children));
}

Element horizontalStack(kinds::HorizontalStack stack, std::vector<Element> children) {
  return Element(stack, std::move(children));
}

Element overlaidStack(Alignment alignment, std::vector<Element> children) {
  return Element(kinds::OverlaidStack{alignment}, std::move(children));
}

Element button(std::function<void()> action, const Element& label) {
  return Element(kinds::Button{std::move(action)}, {label});
}

Element menu(std::vector<MenuEntry> entries, const Element& label) {
  const platform::Font font{.size = 8, .weight = platform::FontWeight::bold};
  const Element sign = symbol({.name = "chevron.down", .font = font}).opacity(0.7);
  return Element(kinds::Menu{std::move(entries)},
                 {horizontalStack({.spacing = 4}, {label, sign}).contentShape(Rectangle{})});
}

}  // namespace hushpane::declarative

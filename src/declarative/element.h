#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "declarative/context.h"
#include "declarative/element_kinds.h"

namespace hushpane::declarative {

inline constexpr double infinity = std::numeric_limits<double>::infinity();

template <class Type>
concept View = requires(const Type& view, Context& context) {
  { view.body(context) } -> std::same_as<Element>;
};

// A part of a page as described by its view; immutable and cheap to copy. An empty one shows nothing and takes no
// space. Each modifier gives a new element around this one; the order matters, from the inside out.
class Element {
 public:
  Element() = default;
  Element(Kind kind, std::vector<Element> children);
  template <View Type>
  Element(Type view)  // NOLINT(google-explicit-constructor): a view stands for its body
      : Element(
            kinds::Component{typeid(Type), [view = std::move(view)](Context& context) { return view.body(context); }},
            {}) {}

  bool isEmpty() const { return !data_; }
  const Kind& kind() const;
  const std::vector<Element>& children() const;

  // Layout. Without a number, a side is as long as the element makes it.
  Element padding(double all) const { return padding({all, all, all, all}); }
  Element padding(Insets insets) const { return in(kinds::Padding{insets}); }
  Element frame(kinds::Frame frame) const { return in(std::move(frame)); }
  // Lays the element out at its ideal size, whatever is offered.
  Element fixedSize(bool horizontal = true, bool vertical = true) const {
    return in(kinds::FixedSize{horizontal, vertical});
  }

  Element background(Element behind, Alignment alignment = {}) const;
  Element overlay(Element inFront, Alignment alignment = {}) const;

  // Looks.
  Element foreground(AdaptiveColor color) const { return in(kinds::Foreground{color}); }
  Element opacity(double opacity) const { return in(kinds::Effect{.opacity = opacity, .shadows = {}}); }
  Element saturation(double saturation) const { return in(kinds::Effect{.saturation = saturation, .shadows = {}}); }
  Element blur(double radius) const { return in(kinds::Effect{.blurRadius = radius, .shadows = {}}); }
  Element shadow(AdaptiveColor color, double radius, platform::Point offset = {}) const {
    return shadows({{color, radius, offset}});
  }
  // The first one is cast last, over the others.
  Element shadows(std::vector<AdaptiveShadow> shadows) const {
    return in(kinds::Effect{.shadows = std::move(shadows)});
  }
  Element offset(double x, double y) const { return in(kinds::Offset{{x, y}}); }
  Element scale(double factor, UnitPoint anchor = unit::center) const { return in(kinds::Scale{factor, anchor}); }
  Element clip(Shape shape) const { return in(kinds::Clip{shape}); }
  Element environment(std::function<void(Environment&)> change) const {
    return in(kinds::EnvironmentChange{std::move(change)});
  }

  // Behaviour. Actions run on the main queue's thread, once the page is consistent; they may remove their own view.
  Element contentShape(Shape shape) const { return in(kinds::ContentShape{shape}); }
  Element onTap(std::function<void()> action) const { return in(kinds::Tap{std::move(action)}); }
  Element onHover(std::function<void(bool)> action) const { return in(kinds::Hover{std::move(action)}); }
  Element onAppear(std::function<void()> action) const { return in(kinds::Appearing{std::move(action), {}}); }
  Element onDisappear(std::function<void()> action) const { return in(kinds::Appearing{{}, std::move(action)}); }
  // After the page was rendered with another value than before.
  Element onChange(Equatable value, std::function<void()> action) const {
    return in(kinds::Change{std::move(value), std::move(action)});
  }
  Element tooltip(std::string text) const { return in(kinds::Tooltip{std::move(text)}); }
  Element accessibility(kinds::Accessibility accessibility) const { return in(std::move(accessibility)); }

  // Identity and motion. Another id is another identity: the old element goes, with its transition if it has one
  // inside, and a new one comes. In a list, elements keep their identity by their ids, else by their positions.
  Element id(Equatable id) const { return in(kinds::Identified{std::move(id)}); }
  Element animation(Animation animation, Equatable value) const {
    return in(kinds::Animated{animation, std::move(value)});
  }
  Element unanimated() const { return in(kinds::Unanimated{}); }
  Element transition(Transition transition) const { return in(kinds::Transitioned{std::move(transition)}); }
  Element transition(TransitionEffect both) const { return transition(Transition{both, both}); }
  Element matchedGeometry(MatchedGeometryId id) const { return in(kinds::MatchedGeometry{std::move(id)}); }

 private:
  struct Data;

  Element in(Kind modifier) const;

  std::shared_ptr<const Data> data_;
};

struct Element::Data {
  Kind kind;
  std::vector<Element> children;
};

inline Element::Element(Kind kind, std::vector<Element> children)
    : data_(std::make_shared<const Data>(Data{std::move(kind), std::move(children)})) {}
inline const Kind& Element::kind() const {
  return data_->kind;
}
inline const std::vector<Element>& Element::children() const {
  return data_->children;
}
// Nothing stays nothing, whatever is said of it.
inline Element Element::in(Kind modifier) const {
  return isEmpty() ? Element() : Element(std::move(modifier), {*this});
}
inline Element Element::background(Element behind, Alignment alignment) const {
  return isEmpty() ? Element()
                   : Element(kinds::Layered{kinds::Layered::Side::behind, alignment}, {*this, std::move(behind)});
}
inline Element Element::overlay(Element inFront, Alignment alignment) const {
  return isEmpty() ? Element()
                   : Element(kinds::Layered{kinds::Layered::Side::inFront, alignment}, {*this, std::move(inFront)});
}

inline Element text(std::string text, platform::TextStyle style = {}) {
  return Element(kinds::Text{std::move(text), style}, {});
}
inline Element text(std::string text, platform::Font font) {
  return declarative::text(std::move(text), platform::TextStyle{.font = font});
}
// Null: nothing.
inline Element picture(platform::ImagePtr image) {
  return image ? Element(kinds::Picture{std::move(image)}, {}) : Element();
}
inline Element symbol(kinds::Symbol symbol) {
  return Element(symbol, {});
}
inline Element fill(Shape shape, std::optional<AdaptivePaint> paint = std::nullopt) {
  return Element(kinds::Fill{shape, paint}, {});
}
inline Element stroke(Shape shape, AdaptiveColor color, double width, double inset = 0) {
  return Element(kinds::Stroke{shape, color, width, inset}, {});
}
inline Element spacer(double minLength = 8) {
  return Element(kinds::Spacer{minLength}, {});
}
inline Element divider() {
  return Element(kinds::Divider{}, {});
}
inline Element verticalStack(kinds::VerticalStack stack, std::vector<Element> children) {
  return Element(stack, std::move(children));
}
inline Element horizontalStack(kinds::HorizontalStack stack, std::vector<Element> children) {
  return Element(stack, std::move(children));
}
inline Element overlaidStack(Alignment alignment, std::vector<Element> children) {
  return Element(kinds::OverlaidStack{alignment}, std::move(children));
}
inline Element button(std::function<void()> action, const Element& label) {
  return Element(kinds::Button{std::move(action)}, {label});
}

}  // namespace hushpane::declarative

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
      : Element(kinds::Component{typeid(Type),
                                 [view = std::move(view)](Context& context) { return view.body(context); }}) {}

  bool isEmpty() const { return !data_; }
  const Kind& kind() const;
  const std::vector<Element>& children() const;

  // Layout. Without a number, a side is as long as the element makes it.
  Element padding(double all) const;
  Element padding(Insets insets) const;
  Element frame(kinds::Frame frame) const;
  // Lays the element out at its ideal size, whatever is offered.
  Element fixedSize(bool horizontal = true, bool vertical = true) const;
  // At most as high as is offered; what does not fit is scrolled into view.
  Element scrolling() const;

  Element background(Element behind, Alignment alignment = {}) const;
  Element overlay(Element inFront, Alignment alignment = {}) const;

  // Looks.
  Element foreground(AdaptiveColor color) const;
  Element opacity(double opacity) const;
  Element saturation(double saturation) const;
  Element blur(double radius) const;
  Element shadow(AdaptiveColor color, double radius, platform::Point offset = {}) const {
    return shadows({{color, radius, offset}});
  }
  // The first one is cast last, over the others.
  Element shadows(std::vector<AdaptiveShadow> shadows) const;
  Element offset(double x, double y) const;
  Element scale(double factor, UnitPoint anchor = unit::center) const;
  Element clip(Shape shape) const;
  Element environment(std::function<void(Environment&)> change) const;

  // Behaviour. Actions run on the main queue's thread, once the page is consistent; they may remove their own view.
  Element contentShape(Shape shape) const;
  Element onTap(std::function<void()> action) const;
  // Also while the keyboard's focus is inside.
  Element onHover(std::function<void(bool)> action) const;
  Element onFocus(std::function<void(bool)> action) const;
  Element focusGroup(FocusGroupStyle style = FocusGroupStyle::choice) const;
  Element onAppear(std::function<void()> action) const;
  Element onDisappear(std::function<void()> action) const;
  // After the page was rendered with another value than before.
  Element onChange(Equatable value, std::function<void()> action) const;
  Element tooltip(std::string text) const;
  Element accessibility(kinds::Accessibility accessibility) const;

  // Identity and motion. Another id is another identity: the old element goes, with its transition if it has one
  // inside, and a new one comes. In a list, elements keep their identity by their ids, else by their positions.
  Element id(Equatable id) const;
  Element animation(Animation animation, Equatable value) const;
  Element unanimated() const;
  Element transition(Transition transition) const;
  Element transition(TransitionEffect both) const;
  Element matchedGeometry(MatchedGeometryId id) const;

 private:
  struct Data;

  explicit Element(kinds::Component component);
  Element in(Kind modifier) const;

  std::shared_ptr<const Data> data_;
};

Element text(std::string text, platform::TextStyle style = {});
Element text(std::string text, platform::Font font);
// Null: nothing.
Element picture(platform::ImagePtr image);
Element symbol(kinds::Symbol symbol);
Element fill(Shape shape, std::optional<AdaptivePaint> paint = std::nullopt);
Element stroke(Shape shape, AdaptiveColor color, double width, double inset = 0);
Element spacer(double minLength = 8);
Element divider();
Element verticalStack(kinds::VerticalStack stack, std::vector<Element> children);
Element horizontalStack(kinds::HorizontalStack stack, std::vector<Element> children);
Element overlaidStack(Alignment alignment, std::vector<Element> children);
Element button(std::function<void()> action, const Element& label);
// The label with a sign that it opens a menu, which whoever shows the page does.
Element menu(std::vector<MenuEntry> entries, const Element& label);

}  // namespace hushpane::declarative

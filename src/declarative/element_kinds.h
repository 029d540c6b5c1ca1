#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <typeindex>
#include <utility>
#include <variant>
#include <vector>

#include "declarative/adaptive_color.h"
#include "declarative/animation.h"
#include "declarative/environment.h"
#include "declarative/equatable.h"
#include "declarative/menu.h"
#include "declarative/shape.h"
#include "declarative/symbol.h"
#include "platform/canvas.h"
#include "platform/image.h"
#include "platform/text.h"

// Everything that an element can be, as plain values. Pages are written with the functions and modifiers of element.h.
namespace hushpane::declarative {

class Context;
class Element;

enum class HorizontalAlignment { leading, center, trailing };
enum class VerticalAlignment { top, center, bottom, firstTextBaseline };

struct Alignment {
  HorizontalAlignment horizontal = HorizontalAlignment::center;
  VerticalAlignment vertical = VerticalAlignment::center;
  bool operator==(const Alignment&) const = default;
};

namespace alignment {
inline constexpr Alignment center{};
inline constexpr Alignment leading{HorizontalAlignment::leading, VerticalAlignment::center};
inline constexpr Alignment topTrailing{HorizontalAlignment::trailing, VerticalAlignment::top};
inline constexpr Alignment topLeading{HorizontalAlignment::leading, VerticalAlignment::top};
inline constexpr Alignment top{HorizontalAlignment::center, VerticalAlignment::top};
}  // namespace alignment

// Distances from the four edges, in points.
struct Insets {
  double top = 0;
  double leading = 0;
  double bottom = 0;
  double trailing = 0;
  bool operator==(const Insets&) const = default;
};

// How an element comes and goes: what it looks like before its insertion or after its removal.
struct TransitionEffect {
  double opacity = 1;
  platform::Point offset{};
  double scale = 1;
  UnitPoint anchor{};
};
struct Transition {
  TransitionEffect insertion;
  TransitionEffect removal;
};

// Ties elements of which only one is there at a time: the next one starts where the last one was.
struct MatchedGeometryId {
  std::string_view name;
  Equatable nameSpace;
  bool operator==(const MatchedGeometryId&) const = default;
};

// How the keyboard moves in a group of elements that is one stop for Tab.
enum class FocusGroupStyle {
  choice,  // arrows choose the neighbour, as among radio buttons
  // A list that is opened to choose from it: it has the focus from the start, arrows and the pointer move it, and the
  // elements show it themselves.
  menu,
};

enum class AccessibilityRole { none, text, header, button, toggle, image };

namespace kinds {

// Leaves.
struct Text {
  std::string text;
  platform::TextStyle style;
};
struct Symbol {
  std::string_view name;
  platform::Font font;
  SymbolVariant variant = SymbolVariant::plain;
  bool isMirrored = false;  // in a page from right to left: for what points backwards or forwards
};
struct Picture {  // takes the space it is offered; the middle of the image fills it
  platform::ImagePtr image;
  bool isTemplate = false;  // only its alpha, in the foreground colour
};
struct Fill {
  Shape shape;
  std::optional<AdaptivePaint> paint;  // else the foreground colour
};
struct Stroke {  // along the middle of the shape's outline, `inset` points inside it
  Shape shape;
  AdaptiveColor color;
  double width = 1;
  double inset = 0;
};
struct Spacer {
  double minLength = 8;
};
struct Divider {};

// Containers.
struct VerticalStack {
  HorizontalAlignment alignment = HorizontalAlignment::center;
  double spacing = 8;
  bool fillsWidth = false;  // without a width from outside, all children are offered the width of the widest
};
struct HorizontalStack {
  VerticalAlignment alignment = VerticalAlignment::center;
  double spacing = 8;
};
struct OverlaidStack {  // the first child at the back
  Alignment alignment;
};
// Two children; the second one gets the size of the first and lies behind or in front of it.
struct Layered {
  enum class Side { behind, inFront };
  Side side = Side::behind;
  Alignment alignment;
};

// Modifiers of one child: layout.
struct Padding {
  Insets insets;
};
struct Frame {
  std::optional<double> width{}, height{}, minWidth{}, maxWidth{}, minHeight{}, maxHeight{};
  Alignment alignment{};
};
struct FixedSize {
  bool horizontal = true;
  bool vertical = true;
};
struct Scrolling {};  // as high as it can be and its content needs; it shows a part of what is higher

// Looks.
struct Foreground {
  AdaptiveColor color;
};
struct Effect {
  double opacity = 1;
  double saturation = 1;
  double blurRadius = 0;
  std::vector<AdaptiveShadow> shadows;
};
struct Offset {
  platform::Point offset;
};
struct Scale {
  double factor = 1;
  UnitPoint anchor;
};
struct Clip {
  Shape shape;
};
struct EnvironmentChange {
  std::function<void(Environment&)> change;
};

// Behaviour.
struct ContentShape {  // where the pointer meets the child, whatever it draws
  Shape shape;
};
struct Tap {
  std::function<void()> action;
};
struct Button {  // fainter while it is pressed
  std::function<void()> action;
};
struct Menu {  // the same
  std::vector<MenuEntry> entries;
};
struct Hover {
  std::function<void(bool)> action;
};
struct Focus {
  std::function<void(bool)> action;
};
struct FocusGroup {
  FocusGroupStyle style = FocusGroupStyle::choice;
};
struct Appearing {
  std::function<void()> appeared;
  std::function<void()> disappeared;
};
struct Change {
  Equatable value;
  std::function<void()> action;
};
struct Tooltip {
  std::string text;
};
struct Accessibility {
  AccessibilityRole role = AccessibilityRole::none;
  std::string label{};
  bool isHidden = false;
  std::optional<bool> isOn{};
};

// Identity and motion.
struct Identified {
  Equatable id;
};
struct Animated {  // what changes below it together with the value
  Animation animation;
  Equatable value;
};
struct Unanimated {};
struct Transitioned {
  Transition transition;
};
struct MatchedGeometry {
  MatchedGeometryId id;
};

// A view with a body.
struct Component {
  std::type_index type;
  std::function<Element(Context&)> body;
};

}  // namespace kinds

using Kind =
    std::variant<kinds::Text, kinds::Symbol, kinds::Picture, kinds::Fill, kinds::Stroke, kinds::Spacer, kinds::Divider,
                 kinds::VerticalStack, kinds::HorizontalStack, kinds::OverlaidStack, kinds::Layered, kinds::Padding,
                 kinds::Frame, kinds::FixedSize, kinds::Scrolling, kinds::Foreground, kinds::Effect, kinds::Offset,
                 kinds::Scale, kinds::Clip, kinds::EnvironmentChange, kinds::ContentShape, kinds::Tap, kinds::Button,
                 kinds::Menu, kinds::Hover, kinds::Focus, kinds::FocusGroup, kinds::Appearing, kinds::Change,
                 kinds::Tooltip, kinds::Accessibility, kinds::Identified, kinds::Animated, kinds::Unanimated,
                 kinds::Transitioned, kinds::MatchedGeometry, kinds::Component>;

}  // namespace hushpane::declarative

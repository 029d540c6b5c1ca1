#pragma once

#include <utility>

#include "declarative/element.h"

namespace hushpane {

// What a toggle style draws and changes.
struct ToggleConfiguration {
  declarative::Element label;
  declarative::Binding<bool> isOn;
};

template <class Type>
concept ToggleStyle = requires(const Type& style, const ToggleConfiguration& toggle, declarative::Context& context) {
  { style.body(toggle, context) } -> std::same_as<declarative::Element>;
};

// A row that turns something on and off.
template <ToggleStyle Style>
struct Toggle {
  ToggleConfiguration configuration;
  Style style;

  declarative::Element body(declarative::Context& context) const { return style.body(configuration, context); }
};

template <ToggleStyle Style>
declarative::Element toggle(declarative::Element label, declarative::Binding<bool> isOn, Style style) {
  return Toggle<Style>{{std::move(label), std::move(isOn)}, std::move(style)};
}

}  // namespace hushpane

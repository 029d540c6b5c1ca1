#pragma once

#include "declarative/element.h"

namespace hushpane {

// Brings its content in anew each time it is shown: it fades in and grows from its top.
struct MenuAppearAnimation {
  declarative::Element content;

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

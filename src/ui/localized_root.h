#pragma once

#include <functional>

#include "declarative/element.h"

namespace hushpane {

// Shows `content` in the language in use, in the direction in which its texts are read, and anew in every other one.
struct LocalizedRoot {
  std::function<declarative::Element()> content;

  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

#pragma once

#include "declarative/element.h"

namespace hushpane {

// Whether the program looks for newer versions by itself, and a way to look now.
struct UpdatesSection {
  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

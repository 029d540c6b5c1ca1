#pragma once

#include "declarative/element.h"

namespace hushpane {

// Ends the program at once.
struct QuitRow {
  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

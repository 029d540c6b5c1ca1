#pragma once

#include "declarative/element.h"

namespace hushpane {

// All that the panel shows: the page that the router asks for, in the language in use.
struct PanelRoot {
  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

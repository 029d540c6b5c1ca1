#pragma once

#include "declarative/element.h"

namespace hushpane {

// Shows the flag of the language in use, and lets the user choose another one or that of the desktop.
struct LanguageMenu {
  declarative::Element body(declarative::Context& context) const;
};

}  // namespace hushpane

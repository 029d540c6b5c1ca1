#pragma once

#include <vector>

#include "declarative/element.h"

namespace hushpane {

// One row for each connected display, which turns its cover on and off; none where there is only one display.
std::vector<declarative::Element> displayRows();

}  // namespace hushpane

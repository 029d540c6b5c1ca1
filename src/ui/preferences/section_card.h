#pragma once

#include <string_view>
#include <vector>

#include "declarative/element.h"

namespace hushpane {

// Rows of settings in a card under their title.
declarative::Element sectionCard(std::string_view title, std::vector<declarative::Element> rows);

}  // namespace hushpane

#pragma once

#include <string>

#include "state/veil_mode.h"

namespace hushpane::widget {

enum class LineFormat {
  text,  // the text under which the mode is stored
  json,  // an object of texts as status bars read it: text and tooltip for people, alt and class for their settings
};

// The line, without its end, that shows a mode that users can choose.
std::string statusLine(VeilMode mode, LineFormat format);

}  // namespace hushpane::widget

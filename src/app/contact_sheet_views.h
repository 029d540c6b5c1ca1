#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "declarative/element.h"
#include "platform/platform.h"

namespace hushpane {

// One view in one state. What the pointer does is told in points from its top-leading corner.
struct SheetView {
  std::string caption;
  std::function<declarative::Element()> make;
  std::optional<platform::Point> pointer = {};  // rests there
  std::optional<platform::Point> press = {};    // is held down there
  std::optional<platform::Point> click = {};    // clicks there once the view has come to rest
  double seconds = 3;                           // until it is in its state; longer than any animation that ends
};

// Nothing when there is no sheet of that name.
std::optional<std::vector<SheetView>> sheetViews(platform::Platform& platform, std::string_view sheet);

}  // namespace hushpane

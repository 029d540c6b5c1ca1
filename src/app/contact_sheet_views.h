#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "declarative/host.h"
#include "platform/platform.h"

namespace hushpane {

// One view in one state.
struct SheetView {
  std::string caption;
  std::function<declarative::Element()> make;
  std::function<void(declarative::Host&)> prepare = {};  // once it is there: what the pointer does
  double seconds = 3;  // until it is in its state; longer than any animation that ends
};

// Nothing when there is no sheet of that name.
std::optional<std::vector<SheetView>> sheetViews(platform::Platform& platform, std::string_view sheet);

}  // namespace hushpane

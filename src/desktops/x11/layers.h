#pragma once

#include <vector>

#include "platform/color.h"
#include "platform/image.h"
#include "platform/view.h"

namespace hushpane::x11 {

// One thing to draw over the whole of a window.
struct Layer {
  enum class Kind { material, color, image };
  Kind kind = Kind::color;
  platform::Color color;  // with its own alpha
  platform::ImagePtr image;
  double opacity = 1;

  // Hides everything beneath it. Pictures count as opaque: they fill the window.
  bool isOpaque() const { return opacity >= 1 && (kind != Kind::color || color.alpha >= 1); }
};

// What the view shows at this moment, from bottom to top. Nothing that cannot be seen is among it: no transparent
// layer, and none beneath an opaque one.
std::vector<Layer> layersOf(const platform::View& view);

}  // namespace hushpane::x11

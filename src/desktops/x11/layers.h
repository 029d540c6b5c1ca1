#pragma once

#include <cstdint>
#include <vector>

#include "platform/color.h"
#include "platform/image.h"
#include "platform/view.h"

namespace hushpane::x11 {

// One thing to draw over the whole of a window.
struct Layer {
  enum class Kind {
    material,
    color,
    image,     // fills the window
    drawable,  // stretched over the window, drawn anew often
  };
  Kind kind = Kind::color;
  platform::Color color;  // with its own alpha
  platform::ImagePtr image;
  double opacity = 1;
  std::uint64_t frame = 0;  // another number for another state of a drawable

  // Hides everything beneath it. Pictures count as opaque, drawables do not.
  bool isOpaque() const { return opacity >= 1 && kind != Kind::drawable && (kind != Kind::color || color.alpha >= 1); }
  // Has no detail that a few pixels could not show.
  bool isSmooth() const { return kind != Kind::image; }
};

// What the view shows at this moment, from bottom to top. Nothing that cannot be seen is among it: no transparent
// layer, and none beneath an opaque one.
std::vector<Layer> layersOf(const platform::View& view);

}  // namespace hushpane::x11

#pragma once

#include <map>
#include <vector>

#include "desktops/x11/layers.h"
#include "desktops/x11/render.h"

namespace hushpane::x11 {

// The drawables of one overlay on the server. Each frame is sent once, as small as it is; stretching is the server's.
// They are freed when a round of drawing did without them.
class DrawableStore {
 public:
  DrawableStore(Connection& connection, Render& render) : connection_(connection), render_(render) {}

  // The frame of that layer, stretched over the pixels of `target`, which stand for those of the `overlay`.
  xcb_render_picture_t picture(const Layer& layer, const PixelRect& overlay, const PixelRect& target);
  void freeUnused();

 private:
  struct Stored {
    Surface surface;
    std::uint64_t frame = 0;
    bool isUsed = false;
  };

  Connection& connection_;
  Render& render_;
  std::map<const platform::Image*, Stored> drawables_;
  std::vector<std::uint32_t> pixels_;
};

}  // namespace hushpane::x11

#pragma once

#include <xcb/xcb.h>

#include <functional>
#include <optional>
#include <vector>

#include "desktops/shared/cairo_picture.h"
#include "platform/canvas.h"
#include "platform/color.h"
#include "platform/path.h"

namespace hushpane::x11 {

// The pixels of a panel as the program draws them; kept as long as the panel is shown.
class PanelPicture {
 public:
  // A picture of that size, to be drawn wholly; nothing happens when it has that size already.
  void setSize(int width, int height);
  void release();
  bool isEmpty() const { return !surface_; }

  // Draws `damage` (in points) anew. With a ground, on it and opaquely.
  void draw(double scale, const platform::Rect& damage, const std::optional<platform::Color>& ground,
            const std::function<void(platform::Canvas&)>& paint);

  // Sends the pixels that `damage` touches to a drawable of depth 32.
  void send(xcb_connection_t* server, xcb_drawable_t drawable, double scale, const platform::Rect& damage) const;

 private:
  desktops::SurfacePtr surface_;
};

// The pixels that the path covers at least by half, as rectangles; within `width` by `height`.
std::vector<xcb_rectangle_t> pixelsOf(const platform::Path& path, double scale, int width, int height);

}  // namespace hushpane::x11

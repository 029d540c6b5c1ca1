#include "desktops/x11/root_bounds.h"

#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

PixelRect rootBounds(Connection& connection) {
  const Reply<xcb_get_geometry_reply_t> geometry(
      xcb_get_geometry_reply(connection.get(), xcb_get_geometry(connection.get(), connection.root()), nullptr));
  return geometry ? PixelRect{0, 0, geometry->width, geometry->height} : PixelRect{};
}

}  // namespace hushpane::x11

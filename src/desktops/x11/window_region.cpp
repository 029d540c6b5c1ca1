#include "desktops/x11/window_region.h"

#include <xcb/shape.h>

namespace hushpane::x11 {

Region makeRegion(Connection& connection, std::span<const xcb_rectangle_t> rectangles) {
  Region region(connection.get(), connection.newId());
  xcb_xfixes_create_region(connection.get(), region.get(), static_cast<std::uint32_t>(rectangles.size()),
                           rectangles.data());
  return region;
}

Region shapeOf(Connection& connection, const StackEntry& entry, const PixelRect& corner) {
  Region region(connection.get(), connection.newId());
  xcb_xfixes_create_region_from_window(connection.get(), region.get(), entry.id, XCB_SHAPE_SK_BOUNDING);
  xcb_xfixes_translate_region(connection.get(), region.get(),
                              static_cast<std::int16_t>(entry.bounds.x + entry.border - corner.x),
                              static_cast<std::int16_t>(entry.bounds.y + entry.border - corner.y));
  return region;
}

}  // namespace hushpane::x11

#include "desktops/x11/cover_shape.h"

#include <xcb/shape.h>

#include <algorithm>
#include <span>

#include "desktops/x11/window_region.h"

namespace hushpane::x11 {

CoverShape CoverShape::nothing() {
  CoverShape shape;
  shape.isNothing_ = true;
  return shape;
}

CoverShape CoverShape::around(const std::vector<StackEntry>& below, const std::vector<xcb_window_t>& clear) {
  CoverShape shape;
  for (const auto& window : below) {
    const bool isClear = std::ranges::find(clear, window.id) != clear.end();
    if (isClear || !shape.parts_.empty()) shape.parts_.push_back({window, isClear});
  }
  return shape;
}

bool CoverShape::operator==(const CoverShape& other) const {
  const auto isSame = [](const Part& a, const Part& b) {
    return a.isClear == b.isClear && a.window.id == b.window.id && a.window.bounds == b.window.bounds &&
           a.window.facts.shadow == b.window.facts.shadow && a.window.contentGeneration == b.window.contentGeneration;
  };
  return isNothing_ == other.isNothing_ && std::ranges::equal(parts_, other.parts_, isSame);
}

void CoverShape::apply(Connection& connection, xcb_window_t overlay, const PixelRect& bounds, Whole whole) const {
  auto* const server = connection.get();
  if (!isNothing_ && parts_.empty() && whole == Whole::unshaped) {
    xcb_shape_mask(server, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, overlay, 0, 0, XCB_PIXMAP_NONE);
    return;
  }
  const xcb_rectangle_t everything = PixelRect{0, 0, bounds.width, bounds.height}.toXcb();
  const auto seen = isNothing_ ? makeRegion(connection) : makeRegion(connection, std::span(&everything, 1));
  const auto hole = makeRegion(connection);
  for (const auto& part : parts_) {
    const auto own = shapeOf(connection, part.window, bounds);
    const xcb_rectangle_t body = part.window.bodyBounds().translated(-bounds.x, -bounds.y).toXcb();
    const auto inBody = makeRegion(connection, std::span(&body, 1));
    xcb_xfixes_intersect_region(server, own.get(), inBody.get(), own.get());
    if (part.isClear)
      xcb_xfixes_union_region(server, hole.get(), own.get(), hole.get());
    else
      xcb_xfixes_subtract_region(server, hole.get(), own.get(), hole.get());
  }
  xcb_xfixes_subtract_region(server, seen.get(), hole.get(), seen.get());
  xcb_xfixes_set_window_shape_region(server, overlay, XCB_SHAPE_SK_BOUNDING, 0, 0, seen.get());
}

}  // namespace hushpane::x11

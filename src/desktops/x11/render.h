#pragma once

#include <xcb/render.h>

#include <cstdint>
#include <map>
#include <span>

#include "desktops/shared/drawable_stretch.h"
#include "desktops/x11/connection.h"
#include "desktops/x11/pixel_rect.h"
#include "desktops/x11/xcb_handle.h"
#include "platform/color.h"

namespace hushpane::x11 {

using Picture = Handle<xcb_render_free_picture>;

// A picture together with the pixels it draws on.
struct Surface {
  PixmapHandle pixmap;
  Picture picture;
  int width = 0;
  int height = 0;

  explicit operator bool() const { return static_cast<bool>(picture); }
  bool hasSize(int otherWidth, int otherHeight) const {
    return picture && width == otherWidth && height == otherHeight;
  }
};

enum class SurfaceFormat { opaque, argb };

// Drawing on the server. Coordinates of pixels; sources and targets are pictures.
class Render {
 public:
  explicit Render(Connection& connection);

  // A 32-bit visual with alpha; 0 when the server has none.
  xcb_visualid_t argbVisual() const { return argbVisual_; }

  // Whether pixels of that visual may be transparent.
  bool hasAlpha(xcb_visualid_t visual) const;

  Surface makeSurface(SurfaceFormat format, int width, int height);
  Picture makePicture(xcb_drawable_t drawable, xcb_visualid_t visual);
  Picture makeTiledPicture(xcb_pixmap_t pixmap, xcb_visualid_t visual);
  Picture makeSolid(const platform::Color& color);

  // Copies or blends `source`, placed so that its origin lies at `origin` of the target, into `area` of the target.
  // `mask` may be none.
  void composite(std::uint8_t operation, xcb_render_picture_t source, xcb_render_picture_t mask,
                 xcb_render_picture_t target, xcb_point_t origin, const PixelRect& area);
  void fill(std::uint8_t operation, xcb_render_picture_t target, const platform::Color& color,
            std::span<const PixelRect> areas);
  // Only these parts of a target are drawn on from then on.
  void setClip(xcb_render_picture_t target, std::span<const PixelRect> areas);
  void clearClip(xcb_render_picture_t target);

  // Prepares `picture` to be read so that its top left corner is at `corner`, in its own pixels, of a target whose unit
  // is `scale` of these pixels. Returns the origin to composite it with.
  xcb_point_t place(xcb_render_picture_t picture, double scale, xcb_point_t corner);
  // The same with its corner at the target's, and a scale for each axis.
  void stretch(xcb_render_picture_t picture, double horizontalScale, double verticalScale);
  // The same by where each place of the target reads the picture.
  void stretch(xcb_render_picture_t picture, const desktops::DrawableStretch& across,
               const desktops::DrawableStretch& down);

 private:
  void readFormats();

  Connection& connection_;
  std::map<xcb_visualid_t, xcb_render_pictformat_t> formats_;
  xcb_render_pictformat_t argbFormat_ = XCB_NONE;
  xcb_render_pictformat_t opaqueFormat_ = XCB_NONE;
  xcb_visualid_t argbVisual_ = XCB_NONE;
};

}  // namespace hushpane::x11

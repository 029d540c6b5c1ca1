#pragma once

#include "desktops/shared/cairo_picture.h"
#include "platform/view.h"

namespace hushpane::sim {

// What lies behind a window, for the views that show it blurred. The blurred picture is made on first use.
class Backdrop {
 public:
  // `picture` is the screen so far, with `scale` pixels to the point, its top left at `origin`.
  Backdrop(desktops::SurfacePtr picture, platform::Point origin, double scale)
      : picture_(std::move(picture)), origin_(origin), scale_(scale) {}

  // Covers the current clip with what lies there, as the dark material shows it.
  void paintDarkHud(const desktops::ContextPtr& context);

 private:
  desktops::SurfacePtr picture_;
  platform::Point origin_;
  double scale_;
  desktops::SurfacePtr blurred_;
};

// Draws a view that fills `frame` (points), with its subviews, at the values that are on screen now.
void paintView(const desktops::ContextPtr& context, const platform::View& view, const platform::Rect& frame,
               Backdrop& backdrop);

}  // namespace hushpane::sim

#pragma once

#include "desktops/shared/cairo_picture.h"
#include "platform/canvas.h"

namespace hushpane::desktops {

// Whole pixels of a picture.
struct PixelArea {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  bool isEmpty() const { return width <= 0 || height <= 0; }
  PixelArea outset(int pixels) const;
  PixelArea moved(int right, int down) const { return {x + right, y + down, width, height}; }
  PixelArea intersection(const PixelArea& other) const;
  // The smallest area around both.
  PixelArea united(const PixelArea& other) const;
};

// The pixels that the rectangle (in points) touches.
PixelArea pixelsTouched(const platform::Rect& rect, double scale);
// Where a context draws, in its pixels.
PixelArea clippedArea(const ContextPtr& context);

// Drawings gathered apart. `context` draws into `surface` in the pixels of the picture around it.
struct CairoGroup {
  SurfacePtr surface;
  ContextPtr context;
  PixelArea area;  // of the surface

  static CairoGroup over(const PixelArea& area);
};

// What must be gathered of a layer within `bounds` so that the effect is right in all of `visible`; empty where it adds
// nothing there. All lengths of the effect are in points.
PixelArea layerArea(const platform::LayerEffect& effect, const PixelArea& bounds, const PixelArea& visible,
                    double scale);

// Brings the group with its effect into the picture of `context`. Changes the group.
void paintGroup(const ContextPtr& context, const CairoGroup& group, const platform::LayerEffect& effect, double scale);

}  // namespace hushpane::desktops

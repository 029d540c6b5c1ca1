#pragma once

#include <vector>

#include "desktops/x11/backdrop.h"
#include "desktops/x11/pixel_rect.h"
#include "desktops/x11/render.h"
#include "platform/color.h"

namespace hushpane::x11 {

// The look of a blurring material.
struct BlurLook {
  double radius = 0;  // pixels; two standard deviations of the Gaussian that the blur comes near to
  platform::Color tint;
};

// How much smaller each picture of the chain is than what is blurred: the first is what lies behind, reduced, the last
// one is so small that scaling it up again spreads a spot by `radius`.
std::vector<double> blurReductions(double radius);

// Blurs on the server: the backdrop is scaled down step by step and up again, each time between neighbours, which is
// cheap where a convolution takes seconds. The result is kept until something behind changes, and then only the part
// that it reaches is done again.
class Blur {
 public:
  Blur(Render& render, const BlurLook& look, int width, int height);

  // Returns the part of the picture, in pixels of the overlay, that differs from before.
  PixelRect refresh(Backdrop& backdrop, const PixelRegion& dirty);

  // The blurred and tinted backdrop, stretched over width x height pixels with the origin (0, 0).
  xcb_render_picture_t picture(int width, int height);
  // Its own size in pixels; stretched from there it loses nothing.
  int ownWidth() const { return result_.surface.width; }
  int ownHeight() const { return result_.surface.height; }
  bool hasSize(int width, int height) const { return width == width_ && height == height_; }

 private:
  struct Level {
    Surface surface;
    double scaleX = 1;  // pixels of the overlay for one of this picture
    double scaleY = 1;
  };
  // The reduced backdrop itself comes first; it stays, so that its unchanged parts need no drawing. The result has the
  // size of this one.
  static constexpr std::size_t resultLevel = 1;

  void scaleBetween(const Level& from, const Level& to, const PixelRect& area);
  static PixelRect areaOn(const Level& level, const PixelRect& onOverlay);
  static PixelRect onOverlay(const Level& level, const PixelRect& area);

  Render& render_;
  BlurLook look_;
  int width_;
  int height_;
  int firstScale_;
  std::vector<Level> levels_;
  Level result_;  // with alpha, like the windows it is drawn on: servers scale fast between equal formats
};

}  // namespace hushpane::x11

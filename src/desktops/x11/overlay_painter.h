#pragma once

#include <memory>
#include <vector>

#include "desktops/x11/backdrop.h"
#include "desktops/x11/blur.h"
#include "desktops/x11/drawable_store.h"
#include "desktops/x11/image_store.h"
#include "desktops/x11/layers.h"
#include "desktops/x11/render.h"

namespace hushpane::x11 {

// What an overlay is to show, and with whose help.
struct OverlayPicture {
  PixelRect bounds;
  std::vector<Layer> layers;
  double alpha = 1;               // of the window as a whole
  bool isComposited = false;      // a compositor blends the window with what lies behind
  bool desktopBlurs = false;      // and blurs what lies behind it
  bool areFramesPainted = false;  // and paints the frames of windows by itself
  std::vector<StackEntry> below;  // bottom to top; those that touch the bounds
};

// What is needed to draw such a picture.
struct DrawingNeeds {
  BackdropUse use = BackdropUse::none;
  bool isBackdropDrawn = false;  // as it is
  bool isBlurDrawn = false;
  bool operator==(const DrawingNeeds&) const = default;
};

DrawingNeeds needsOf(const OverlayPicture& picture);

// Draws one overlay on the server. With a compositor the layers are drawn with their transparency. Without one the
// whole picture is composed here: what lies behind, and over that the layers, each faded by the window's alpha. Each
// drawing reaches the target with one request, so that no half-done picture is ever seen.
class OverlayPainter {
 public:
  // `onDamage` is called when what was drawn is out of date.
  OverlayPainter(Connection& connection, Render& render, CoveredWindows& windows, RootBackground& background,
                 std::function<void()> onDamage);

  // Takes over what is to be shown. To be followed by a paint().
  void setPicture(OverlayPicture picture, bool isContentChanged);
  bool isPaintNeeded() const { return isAllDirty_ || !backdrop_.dirty().isEmpty(); }
  void paint(xcb_render_picture_t target);
  // After the overlay has been moved: lets go of windows that are no longer covered.
  void releaseUncovered() { backdrop_.releaseUncovered(); }
  // Lets go of everything on the server.
  void release();

 private:
  PixelRect everything() const { return {0, 0, picture_.bounds.width, picture_.bounds.height}; }
  PixelRegion refreshBlur();
  bool drawDirectly(xcb_render_picture_t target);
  void prepareCanvas();
  void drawOnCanvas(const PixelRegion& areas);
  bool isSmooth() const;
  void drawSmoothly(xcb_render_picture_t target);
  // Over `area` of the target, which stands for the whole overlay.
  void drawLayer(const Layer& layer, double alpha, std::uint8_t operation, xcb_render_picture_t target,
                 const PixelRect& area);
  void copy(std::uint8_t operation, xcb_render_picture_t source, double opacity, xcb_render_picture_t target,
            const PixelRect& area);

  Render& render_;
  Backdrop backdrop_;
  ImageStore images_;
  DrawableStore drawables_;
  OverlayPicture picture_;
  DrawingNeeds needs_;
  bool isAllDirty_ = true;
  std::unique_ptr<Blur> blur_;
  // Where pictures of several steps are drawn; what was drawn in a part of it holds until that part is drawn again.
  Surface canvas_;
  SurfaceFormat canvasFormat_ = SurfaceFormat::opaque;
  Surface smallCanvas_;  // for pictures without detail
};

}  // namespace hushpane::x11

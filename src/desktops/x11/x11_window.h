#pragma once

#include <memory>
#include <optional>

#include "desktops/x11/compositor_watch.h"
#include "desktops/x11/connection.h"
#include "desktops/x11/cover_shape.h"
#include "desktops/x11/overlay_painter.h"
#include "desktops/x11/placement_choice.h"
#include "desktops/x11/render.h"
#include "desktops/x11/screens.h"
#include "desktops/x11/window_tree.h"
#include "platform/window.h"

namespace hushpane::x11 {

class OverlayStage;

// What the windows of the program share.
struct OverlayServices {
  Connection& connection;
  Render& render;
  WindowTree& tree;
  Screens& screens;
  ManagerWatch& manager;
  CompositorWatch& compositor;
  CoveredWindows& covered;
  RootBackground& background;
};

// An overlay with an alpha channel, on every workspace and never in the way of a click. Its window in the server exists
// only while it is shown, and is made anew where the placement wants one of the other kind. Changes are only noted; the
// stage shows them at the end of the turn, in the order ready() - present() - the place in the stack - settle().
class X11Window : public platform::Window {
 public:
  X11Window(platform::Animator& animator, const platform::Rect& frame,
            const platform::WindowConfiguration& configuration, OverlayServices services, OverlayStage& stage);
  ~X11Window() override;

  // None while it is not shown.
  xcb_window_t id() const { return shown_.window.get(); }
  PixelRect bounds() const { return services_.screens.toPixels(frame()); }
  // Where it really is; a window manager may keep it off its own bars.
  PixelRect placedBounds() const;

  // Makes the window in the server where it is missing or of another generation.
  void ready(PlacementChoice& placement);
  PlacementWish wish() const;
  // Draws what is to be seen when the windows `below` lie below this one, but for those that it leaves clear; nothing
  // is to be seen of one that waits for its place.
  void present(std::vector<StackEntry> below, const std::vector<xcb_window_t>& clear, bool isWaiting);
  // Shows the window, where it was not shown, and lets go of what it no longer needs. Returns whether more of a
  // managed window has just come into sight.
  bool settle();
  void hide(Placement& placement);
  // Everything is to be drawn anew.
  void invalidate() { isContentChanged_ = true; }

 protected:
  void frameChanged() override;
  void orderChanged() override;
  void alphaChanged() override;
  void contentChanged() override;

 private:
  // What the server knows of the window.
  struct Shown {
    ColormapHandle colormap;
    WindowHandle window;
    Picture picture;
    PixelRect bounds;  // that were asked for
    PixelRect placed;  // that it was drawn for
    CoverShape shape;
    bool isManaged = false;
    int generation = 0;
    bool isMapped = false;
    bool isPlaced = false;
    bool isBlurPublished = false;
    std::optional<double> publishedOpacity;
  };
  void create(const PlacementChoice& placement);
  void retire(Placement& placement);
  void publishOpacity(double opacity);
  void publishBlur(bool isWanted);
  void setInputRegion();
  void showNext();

  OverlayServices services_;
  OverlayStage& stage_;
  Shown shown_;
  std::optional<Shown> retired_;  // still to be seen until the new one is
  OverlayPainter painter_;
  Surface background_;  // what the server is to show where the window appears
  std::optional<CoverShape> nextShape_;
  bool isContentChanged_ = true;
};

}  // namespace hushpane::x11

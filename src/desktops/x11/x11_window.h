#pragma once

#include <memory>
#include <optional>

#include "desktops/x11/compositor_watch.h"
#include "desktops/x11/connection.h"
#include "desktops/x11/overlay_painter.h"
#include "desktops/x11/render.h"
#include "desktops/x11/screens.h"
#include "desktops/x11/server_order.h"
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
  CompositorWatch& compositor;
  CoveredWindows& covered;
  RootBackground& background;
};

// An override-redirect window with an alpha channel: on every workspace, out of the window manager's hands, and never
// in the way of a click. Changes are only noted; the stage shows them at the end of the turn, in the order
// present() - the place in the stack - settle().
class X11Window : public platform::Window {
 public:
  X11Window(platform::Animator& animator, const platform::Rect& frame,
            const platform::WindowConfiguration& configuration, OverlayServices services, OverlayStage& stage);
  ~X11Window() override;

  xcb_window_t id() const { return window_.get(); }
  PixelRect bounds() const { return services_.screens.toPixels(frame()); }
  bool isMapped() const { return isMapped_; }

  PlacementWish wish() const;
  // Draws what is to be seen when the windows `below` lie below this one.
  void present(std::vector<StackEntry> below);
  // Shows the window, where it was not shown, and lets go of what it no longer needs.
  void settle();
  void hide();
  // Everything is to be drawn anew.
  void invalidate() { isContentChanged_ = true; }

 protected:
  void frameChanged() override;
  void orderChanged() override;
  void alphaChanged() override;
  void contentChanged() override;

 private:
  void create();
  void setProperties();
  void publishOpacity(double opacity);
  void publishBlur(bool isWanted);
  void setInputRegion();

  OverlayServices services_;
  OverlayStage& stage_;
  ColormapHandle colormap_;
  WindowHandle window_;
  Picture picture_;
  OverlayPainter painter_;
  Surface firstPicture_;
  PixelRect shownBounds_;
  bool isMapped_ = false;
  bool isPlaced_ = false;
  bool isContentChanged_ = true;
  std::optional<double> publishedOpacity_;
  bool isBlurPublished_ = false;
};

}  // namespace hushpane::x11

#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "desktops/x11/covered_windows.h"
#include "desktops/x11/pixel_rect.h"
#include "desktops/x11/render.h"
#include "desktops/x11/root_background.h"
#include "desktops/x11/window_region.h"

namespace hushpane::x11 {

// How much an overlay wants to know of what lies behind it.
enum class BackdropUse {
  none,   // nothing
  keep,   // that it stays whole, should it be wanted later
  watch,  // its pixels, and every change of them
};

// What becomes of windows on their way to the screen.
struct WindowLooks {
  bool areBlended = false;        // a compositor blends those that are transparent with what lies behind
  bool areFramesPainted = false;  // and paints their frames, which the server does not know then
  bool operator==(const WindowLooks&) const = default;
};

// What lies behind one overlay: the root's background and the windows below, in their order. Areas are in pixels of the
// overlay.
class Backdrop {
 public:
  // `onDamage` is called when something behind was drawn on.
  Backdrop(Connection& connection, Render& render, CoveredWindows& windows, RootBackground& background,
           std::function<void()> onDamage);

  // `below` are the windows that will lie below the overlay and touch it, from bottom to top. Windows that no longer
  // do are held until releaseUncovered(), so that the overlay can be moved first.
  void update(BackdropUse use, const PixelRect& overlay, const std::vector<StackEntry>& below, WindowLooks looks);
  void releaseUncovered() { uncovered_.clear(); }

  const PixelRegion& dirty() const { return dirty_; }
  void clearDirty() { dirty_.clear(); }

  // Draws `areas` of the backdrop into the target, made `scale` times smaller. Only the overlay's size divided by the
  // scale is drawn on.
  void compose(const Surface& target, const PixelRegion& areas, int scale);

 private:
  struct Covered {
    StackEntry entry;
    std::shared_ptr<CoveredWindow> window;
    platform::Token damage;
  };
  void keep(Covered& covered, BackdropUse use);
  void markDifferences(const std::vector<Covered>& before);
  void markDirty(const PixelRect& onRoot);
  xcb_point_t cornerOf(const PixelRect& onRoot) const;
  void damaged(xcb_window_t window, const PixelRect& area);
  bool isTransparent(const StackEntry& entry) const;
  void drawRoot(const Surface& target, int scale);
  void drawWindow(const Covered& covered, const Surface& target, int scale);
  void drawFrame(const StackEntry& entry, xcb_render_picture_t picture, const Surface& target, int scale);
  Region regionOf(const Covered& covered, int scale);

  Connection& connection_;
  Render& render_;
  CoveredWindows& windows_;
  RootBackground& background_;
  std::function<void()> onDamage_;
  BackdropUse use_ = BackdropUse::none;
  WindowLooks looks_;
  PixelRect overlay_;
  std::vector<Covered> covered_;
  std::vector<Covered> uncovered_;
  std::shared_ptr<const Picture> root_;
  PixelRegion dirty_;
  platform::Token backgroundChanges_;
};

}  // namespace hushpane::x11

#pragma once

#include <xcb/damage.h>

#include <functional>
#include <map>
#include <memory>

#include "desktops/x11/connection.h"
#include "desktops/x11/render.h"
#include "desktops/x11/stack_model.h"
#include "platform/handler_list.h"

namespace hushpane::x11 {

// A window that lies under an overlay. While this exists the server keeps its pixels whole, also where the overlay
// hides them.
class CoveredWindow {
 public:
  CoveredWindow(Connection& connection, Render& render, xcb_window_t window);
  ~CoveredWindow();
  CoveredWindow(const CoveredWindow&) = delete;
  CoveredWindow& operator=(const CoveredWindow&) = delete;

  // The window's pixels with its border; none when they cannot be had.
  xcb_render_picture_t picture(const StackEntry& entry);

  // Called with the part of the window that was drawn on, relative to its inner corner. The server watches the window
  // only while there is a handler.
  platform::Token addDamageHandler(std::function<void(const PixelRect&)> handler);
  void damaged(const PixelRect& area);

 private:
  using Damage = Handle<xcb_damage_destroy>;
  struct Watch;

  Connection& connection_;
  Render& render_;
  xcb_window_t window_;
  PixmapHandle pixmap_;
  Picture picture_;
  std::uint32_t generation_ = 0;
  std::weak_ptr<Watch> watch_;
};

// The windows that lie under any overlay, each once.
class CoveredWindows {
 public:
  CoveredWindows(Connection& connection, Render& render);

  std::shared_ptr<CoveredWindow> cover(xcb_window_t window);

 private:
  void handle(const xcb_generic_event_t& event);

  Connection& connection_;
  Render& render_;
  std::map<xcb_window_t, std::weak_ptr<CoveredWindow>> windows_;
  platform::Token events_;
};

}  // namespace hushpane::x11

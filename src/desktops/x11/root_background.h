#pragma once

#include <memory>

#include "desktops/x11/compositor_watch.h"
#include "desktops/x11/connection.h"
#include "desktops/x11/painted_background.h"
#include "desktops/x11/render.h"
#include "platform/handler_list.h"

namespace hushpane::x11 {

// The picture behind all windows.
class RootBackground {
 public:
  RootBackground(Connection& connection, Render& render, CompositorWatch& compositor, PaintedBackground& painted);

  // Fills the target from the root's origin on. Kept on the server only while someone holds it.
  std::shared_ptr<const Picture> picture();

  // Called when the picture changed; who holds one asks again.
  platform::Token addChangeHandler(std::function<void()> handler) { return handlers_.add(std::move(handler)); }

 private:
  struct Held;
  void handle(const xcb_generic_event_t& event);
  void changed();
  xcb_pixmap_t publishedPixmap();
  std::shared_ptr<Held> paint();
  std::shared_ptr<Held> copyOfRoot();

  Connection& connection_;
  Render& render_;
  CompositorWatch& compositor_;
  PaintedBackground& painted_;
  std::weak_ptr<Held> held_;
  platform::HandlerList<void()> handlers_;
  platform::Token events_;
  platform::Token compositorChanges_;
  platform::Token paintingChanges_;
};

}  // namespace hushpane::x11

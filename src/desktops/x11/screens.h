#pragma once

#include <vector>

#include "desktops/x11/connection.h"
#include "desktops/x11/pixel_rect.h"
#include "platform/main_queue.h"
#include "platform/notification_center.h"
#include "platform/screen.h"

namespace hushpane::x11 {

// The RandR monitors. Points are counted from the top left of the main monitor; how many pixels they have is one scale
// for all, which the desktop sets (desktop_scale.h) and may change.
class Screens : public platform::Screens {
 public:
  Screens(Connection& connection, platform::MainQueue& queue, platform::NotificationCenter& center);

  const std::vector<platform::Screen>& screens() const override { return screens_; }
  platform::Rect visibleFrame(const platform::Screen& screen) const override;

  // Pixels per point.
  double scale() const { return scale_; }
  PixelRect toPixels(const platform::Rect& points) const;
  platform::Rect toPoints(const PixelRect& pixels) const;

 private:
  void handle(const xcb_generic_event_t& event);
  void changed();
  void read();

  Connection& connection_;
  platform::MainQueue& queue_;
  platform::NotificationCenter& center_;
  std::vector<platform::Screen> screens_;
  xcb_point_t origin_{};
  double scale_ = 1;
  platform::Token events_;
  platform::WorkItem pending_;
};

}  // namespace hushpane::x11

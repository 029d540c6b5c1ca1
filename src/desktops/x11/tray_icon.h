#pragma once

#include <functional>
#include <optional>

#include "desktops/x11/connection.h"
#include "desktops/x11/event_monitors.h"
#include "desktops/x11/overlay_stage.h"
#include "desktops/x11/render.h"
#include "desktops/x11/screens.h"
#include "desktops/x11/system_tray.h"
#include "desktops/x11/xcb_handle.h"
#include "platform/color.h"
#include "platform/main_queue.h"
#include "platform/status_item.h"

namespace hushpane::x11 {

// What the program's icon shares with its other windows.
struct IconServices {
  Connection& connection;
  Render& render;
  const Screens& screens;
  EventMonitors& monitors;
  OverlayStage& stage;
  platform::MainQueue& queue;
};

// The program's icon in the system tray: a window of the program inside the tray's, after XEMBED. It has the colour
// that the tray tells, else one that stands out from what lies behind it.
class TrayIcon {
 public:
  // Called while events are being handled.
  struct Handlers {
    std::function<void(platform::Point)> clicked;  // where, in points of the desktop
    std::function<void(bool)> hovered;  // whether the pointer is over it from now on; a grab takes it away, too
  };

  TrayIcon(const IconServices& services, Handlers handlers);
  ~TrayIcon();

  // Stands in the tray from now on, as soon and as long as there is one. An image with nothing to draw takes it away.
  void setImage(platform::TemplateImage image);

  bool isShown() const { return isEmbedded_; }
  // In points of the desktop; nothing while it is not shown. Waits for the server.
  std::optional<platform::Rect> frame() const;
  // What lies behind the icon may be of another colour now, or soon.
  void groundChanged();

 private:
  struct WindowVisual {
    xcb_visualid_t id;
    std::uint8_t depth;
  };

  void dock();
  void undock();
  void createWindow(WindowVisual visual);
  void handle(const xcb_generic_event_t& event);
  void handleReparent(xcb_window_t parent);
  void handleResize(int width, int height);
  void handleRelease(const xcb_button_release_event_t& release);
  void setHovered(bool isHovered);
  bool hasAlpha() const;
  void chooseColor();
  bool isCovered() const;
  std::optional<double> groundBrightness();
  void draw();

  Connection& connection_;
  IconServices services_;
  Handlers handlers_;
  SystemTray tray_;
  platform::TemplateImage image_;
  std::optional<platform::Color> color_;  // once the ground was seen
  ColormapHandle colormap_;
  WindowHandle window_;
  Picture picture_;
  WindowVisual visual_{};
  int width_ = 0, height_ = 0;  // pixels
  bool isEmbedded_ = false;
  bool isHovered_ = false;
  platform::Token ownWindow_;
  platform::WorkItem secondLook_;
  platform::Token trayChanges_, colorChanges_, coversRest_, events_;
};

}  // namespace hushpane::x11

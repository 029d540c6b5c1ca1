#pragma once

#include <functional>
#include <optional>

#include "desktops/x11/compositor_watch.h"
#include "desktops/x11/connection.h"
#include "desktops/x11/event_monitors.h"
#include "desktops/x11/panel_keyboard.h"
#include "desktops/x11/panel_picture.h"
#include "desktops/x11/render.h"
#include "desktops/x11/screens.h"
#include "desktops/x11/turn_end.h"
#include "desktops/x11/window_tree.h"
#include "platform/lifetime.h"
#include "platform/panel.h"

namespace hushpane::x11 {

// What the panels of the program share.
struct PanelServices {
  Connection& connection;
  platform::MainQueue& queue;
  TurnEnd& turnEnd;
  Render& render;
  Screens& screens;
  CompositorWatch& compositor;
  EventMonitors& monitors;
  WindowTree& tree;
  PanelKeyboard& keyboard;
};

// An override-redirect window with an alpha channel above all others; keys reach it by a grab. Exists on the server
// while it is shown. Changes are only noted, and shown at the end of the turn. With a compositor its pixels are
// transparent where nothing is drawn; without one the window is cut to the panel's outline.
class X11Panel : public platform::Panel {
 public:
  X11Panel(platform::Animator& animator, const platform::PanelConfiguration& configuration,
           platform::PanelContents& contents, PanelServices services);
  ~X11Panel() override;

  void setNeedsDisplay(const platform::Rect& rect) override;

 protected:
  void frameChanged() override;
  void outlineChanged() override;
  void alphaChanged() override;
  void orderChanged() override;

 private:
  void show();
  void open();
  void close();
  void place();
  void cut();
  void draw();
  void publishOpacity();
  void handle(const xcb_generic_event_t& event);
  void handlePress(const xcb_button_press_event_t& event);
  void tell(std::function<void(platform::PanelContents&)> input);
  platform::Point pointAt(int x, int y) const { return {x / scale_, y / scale_}; }
  platform::Rect everything() const { return {0, 0, frame().width, frame().height}; }

  PanelServices services_;
  ColormapHandle colormap_;
  WindowHandle window_;
  PanelPicture picture_;
  PixelRect bounds_;
  double scale_ = 1;
  std::optional<platform::Rect> damage_;
  std::optional<double> publishedOpacity_;
  bool isToBeRaised_ = false;
  bool isMapped_ = false;
  bool isCut_ = false;  // as outline and compositor want it
  platform::Token turns_;
  platform::Token compositorChanges_;
  platform::Token events_;
  platform::Token ownWindow_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::x11

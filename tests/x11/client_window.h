#pragma once

#include <stdexcept>

#include "tests/x11/wait.h"
#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {

// A window whose size and kind the test controls. The connection stands for the application that the window belongs to;
// it outlives the window, so that no window gets the number of an earlier one, which window managers take amiss.
class ClientWindow {
 public:
  struct Look {
    Rect bounds;
    Pixel color;
    std::string type = "_NET_WM_WINDOW_TYPE_NORMAL";
    bool overridesRedirect = false;  // menus and tooltips stand outside the window manager
    std::uint8_t opacity = 255;      // less: what a compositor is to blend; the color is premultiplied
    xcb_window_t owner = XCB_NONE;   // what a dialog or menu belongs to
  };
  // Whether the window has to be on the screen at once, or when the window manager comes to it.
  enum class Appearing { atOnce, someTime };

  ClientWindow(const XConnection& application, const Look& look, Appearing appearing = Appearing::atOnce);
  ~ClientWindow();
  ClientWindow(const ClientWindow&) = delete;
  ClientWindow& operator=(const ClientWindow&) = delete;

  xcb_window_t window() const { return window_; }
  Pixel color() const { return color_; }
  Rect bounds() const { return x_.bounds(window_); }
  Point spot() const { return center(bounds()); }
  void setBounds(const Rect& bounds) { x_.setBounds(window_, bounds); }
  // How many clicks have reached the window so far; for one window of an application.
  int clicks();

 private:
  void create(const Look& look) const;
  void describe(const Look& look) const;

  const XConnection& x_;
  xcb_window_t window_;
  Pixel color_;
  int clicks_ = 0;
};

}  // namespace hushpane::x11_tests

#pragma once

#include <xcb/xcb.h>

#include <memory>
#include <string_view>

namespace hushpane::bench {

// A plain client of the display, as any application is one.
class DisplayClient {
 public:
  DisplayClient();

  xcb_connection_t* get() const { return connection_.get(); }
  const xcb_screen_t& screen() const { return *screen_; }
  // Waits until the server has done all that was asked for.
  void sync();

  // The window that a file manager shows beneath all others, over the whole display; it appears soon.
  xcb_window_t showBackground();
  // Fills a part of the window in another colour than before and waits for it.
  void repaint(xcb_window_t window, const xcb_rectangle_t& part);
  xcb_rectangle_t everything() const { return {0, 0, screen_->width_in_pixels, screen_->height_in_pixels}; }

 private:
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };
  xcb_atom_t atom(std::string_view name);

  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  const xcb_screen_t* screen_;
  xcb_gcontext_t context_ = 0;
  std::uint32_t color_ = 0x406080;
};

// Waits until the server has done all that came over the connection.
void sync(xcb_connection_t* connection);

}  // namespace hushpane::bench

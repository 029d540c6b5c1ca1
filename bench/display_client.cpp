#include "bench/display_client.h"

#include <cstdlib>
#include <stdexcept>

#include "desktops/x11/xcb_handle.h"

namespace hushpane::bench {

DisplayClient::DisplayClient() : connection_(xcb_connect(nullptr, nullptr)) {
  if (xcb_connection_has_error(get())) throw std::runtime_error("cannot open the display");
  screen_ = xcb_setup_roots_iterator(xcb_get_setup(get())).data;
}

void DisplayClient::sync() {
  bench::sync(get());
}

xcb_atom_t DisplayClient::atom(std::string_view name) {
  const auto cookie = xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
  const x11::Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(get(), cookie, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_window_t DisplayClient::showBackground() {
  const auto window = xcb_generate_id(get());
  const auto all = everything();
  xcb_create_window(get(), XCB_COPY_FROM_PARENT, window, screen().root, all.x, all.y, all.width, all.height, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &color_);
  const auto type = atom("_NET_WM_WINDOW_TYPE_DESKTOP");
  xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &type);
  xcb_map_window(get(), window);
  sync();
  return window;
}

void DisplayClient::repaint(xcb_window_t window, const xcb_rectangle_t& part) {
  if (!context_) {
    context_ = xcb_generate_id(get());
    xcb_create_gc(get(), context_, window, 0, nullptr);
  }
  color_ ^= 0xffffff;
  xcb_change_gc(get(), context_, XCB_GC_FOREGROUND, &color_);
  xcb_poly_fill_rectangle(get(), window, context_, 1, &part);
  sync();
}

void sync(xcb_connection_t* connection) {
  std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

}  // namespace hushpane::bench

// The least that a program does to show something: connects and, unless it is told to only wait, maps a window over
// the whole display. Linked with every library of Hushpane, it tells what the libraries alone cost.

#include <unistd.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <string_view>

int main(int count, char** words) {
  auto* const connection = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(connection)) return 1;
  const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  const bool onlyWaits = count > 1 && std::string_view(words[1]) == "--wait";
  if (!onlyWaits) {
    const auto window = xcb_generate_id(connection);
    const std::uint32_t values[] = {screen->black_pixel, 1};
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, screen->width_in_pixels,
                      screen->height_in_pixels, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
    xcb_map_window(connection, window);
    xcb_flush(connection);
  }
  pause();
  xcb_disconnect(connection);
}

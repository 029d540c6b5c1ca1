// A window that is painted anew 30 times a second, as by a film: repainter.

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <thread>

int main() {
  constexpr std::uint16_t width = 1280, height = 720;
  constexpr std::chrono::microseconds interval{1'000'000 / 30};
  auto* const connection = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(connection)) return 1;
  const auto& screen = *xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  const auto window = xcb_generate_id(connection);
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen.root, 100, 100, width, height, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &screen.black_pixel);
  xcb_map_window(connection, window);
  const auto context = xcb_generate_id(connection);
  xcb_create_gc(connection, context, window, 0, nullptr);
  auto next = std::chrono::steady_clock::now();
  for (std::uint32_t color = 0; !xcb_connection_has_error(connection); color += 0x010203) {
    xcb_change_gc(connection, context, XCB_GC_FOREGROUND, &color);
    const xcb_rectangle_t everything{0, 0, width, height};
    xcb_poly_fill_rectangle(connection, window, context, 1, &everything);
    xcb_flush(connection);
    std::this_thread::sleep_until(next += interval);
  }
}

// Many windows of one application: crowd COUNT.

#include <unistd.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

constexpr std::uint16_t width = 320, height = 240;

void showWindow(xcb_connection_t* connection, const xcb_screen_t& screen, int number) {
  const auto window = xcb_generate_id(connection);
  const auto x = static_cast<std::int16_t>(number * 37 % (screen.width_in_pixels - width));
  const auto y = static_cast<std::int16_t>(number * 53 % (screen.height_in_pixels - height));
  const std::uint32_t color = 0x204060 + static_cast<std::uint32_t>(number) * 0x050301;
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen.root, x, y, width, height, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &color);
  const std::string name = "Window " + std::to_string(number);
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                      static_cast<std::uint32_t>(name.size()), name.data());
  // ICCCM 4.1.2.3: the place counts as the user's.
  const std::uint32_t sizeHints[18] = {1};
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32,
                      18, sizeHints);
  xcb_map_window(connection, window);
}

}  // namespace

int main(int count, char** words) {
  auto* const connection = xcb_connect(nullptr, nullptr);
  if (count < 2 || xcb_connection_has_error(connection)) return 1;
  const auto& screen = *xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  const int windows = std::atoi(words[1]);
  for (int number = 0; number < windows; ++number) showWindow(connection, screen, number);
  xcb_flush(connection);
  // The server keeps a client waiting that never reads what it is told.
  while (auto* const event = xcb_wait_for_event(connection)) std::free(event);
}

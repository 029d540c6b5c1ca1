#include "tests/x11/client_window.h"

namespace hushpane::x11_tests {

ClientWindow::ClientWindow(const std::string& display, const Look& look)
    : x_(display), window_(xcb_generate_id(x_.get())), color_(look.color) {
  const std::uint32_t values[] = {look.color.value, look.overridesRedirect, XCB_EVENT_MASK_BUTTON_PRESS};
  xcb_create_window(x_.get(), XCB_COPY_FROM_PARENT, window_, x_.root(), static_cast<std::int16_t>(look.bounds.x),
                    static_cast<std::int16_t>(look.bounds.y), static_cast<std::uint16_t>(look.bounds.width),
                    static_cast<std::uint16_t>(look.bounds.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
  describe(look);
  xcb_map_window(x_.get(), window_);
  if (!waitUntil([&] { return x_.isOnScreen(window_); })) throw std::runtime_error("a window did not appear");
}

ClientWindow::~ClientWindow() {
  xcb_destroy_window(x_.get(), window_);
  x_.sync();
}

// Without decorations, at the place asked for (ICCCM 4.1.2.3: the position counts as the user's).
void ClientWindow::describe(const Look& look) const {
  constexpr std::uint32_t userPosition = 1, userSize = 2, hasDecorations = 2;
  std::vector<std::uint32_t> sizeHints(18);
  sizeHints[0] = userPosition | userSize;
  x_.setNumbers(window_, "WM_NORMAL_HINTS", "WM_SIZE_HINTS", sizeHints);
  x_.setNumbers(window_, "_MOTIF_WM_HINTS", "_MOTIF_WM_HINTS", {hasDecorations, 0, 0, 0, 0});
  x_.setNumbers(window_, "_NET_WM_WINDOW_TYPE", "ATOM", {x_.atom(look.type)});
}

void ClientWindow::setBounds(const Rect& bounds) {
  const std::uint32_t values[] = {static_cast<std::uint32_t>(bounds.x), static_cast<std::uint32_t>(bounds.y),
                                  static_cast<std::uint32_t>(bounds.width), static_cast<std::uint32_t>(bounds.height)};
  xcb_configure_window(x_.get(), window_,
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                       values);
  x_.sync();
}

int ClientWindow::clicks() {
  while (const auto event = own(xcb_poll_for_event(x_.get()))) {
    if ((event->response_type & 0x7f) == XCB_BUTTON_PRESS) ++clicks_;
  }
  return clicks_;
}

}  // namespace hushpane::x11_tests

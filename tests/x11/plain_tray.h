#pragma once

#include "tests/x11/client_window.h"

namespace hushpane::x11_tests {

// A system tray played by the test: one window that takes icons in. It goes without a word.
class PlainTray {
 public:
  static constexpr Rect bounds{200, 300, 100, 60};
  enum class Kind { opaque, transparent, amongWindows };

  PlainTray(const std::string& display, Pixel ground, Kind kind = Kind::opaque)
      : x_(display),
        panel_(x_, {bounds, ground, "_NET_WM_WINDOW_TYPE_NORMAL", kind != Kind::amongWindows,
                    std::uint8_t(kind == Kind::transparent ? 0 : 255)}),
        window_(panel_.window()) {
    if (kind == Kind::transparent) {
      const auto attributes =
          own(xcb_get_window_attributes_reply(x_.get(), xcb_get_window_attributes(x_.get(), window_), nullptr));
      x_.setNumbers(window_, "_NET_SYSTEM_TRAY_VISUAL", "VISUALID", {attributes->visual});
    }
    const auto selection = x_.atom("_NET_SYSTEM_TRAY_S0");
    xcb_set_selection_owner(x_.get(), window_, selection, XCB_CURRENT_TIME);
    xcb_client_message_event_t manager{};
    manager.response_type = XCB_CLIENT_MESSAGE;
    manager.format = 32;
    manager.window = x_.root();
    manager.type = x_.atom("MANAGER");
    manager.data.data32[1] = selection;
    manager.data.data32[2] = window_;
    xcb_send_event(x_.get(), 0, x_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY, reinterpret_cast<const char*>(&manager));
    x_.sync();
  }

  // Takes in an icon that has asked; whether one has.
  bool takeIcon() {
    while (const auto event = own(xcb_poll_for_event(x_.get()))) {
      const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
      if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE || message.type != x_.atom("_NET_SYSTEM_TRAY_OPCODE"))
        continue;
      icon_ = message.data.data32[2];
      xcb_change_save_set(x_.get(), XCB_SET_MODE_INSERT, icon_);
      xcb_reparent_window(x_.get(), icon_, window_, 10, 5);
      xcb_map_window(x_.get(), icon_);
      x_.sync();
    }
    return icon_ != XCB_NONE;
  }
  void resizeIcon(int side) const {
    const std::uint32_t sides[]{std::uint32_t(side), std::uint32_t(side)};
    xcb_configure_window(x_.get(), icon_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, sides);
    x_.sync();
  }
  void releaseIcon() const {
    xcb_reparent_window(x_.get(), icon_, x_.root(), 0, 0);
    x_.sync();
  }
  // Of another colour from now on, of which it does not tell.
  void paint(Pixel ground) const {
    const std::uint32_t value = ground.value;
    xcb_change_window_attributes(x_.get(), window_, XCB_CW_BACK_PIXEL, &value);
    xcb_clear_area(x_.get(), 0, window_, 0, 0, 0, 0);
    x_.sync();
  }
  // The tray of another look.
  void setColors(const std::vector<std::uint32_t>& colors) const {
    x_.setNumbers(window_, "_NET_SYSTEM_TRAY_COLORS", "CARDINAL", colors);
    x_.sync();
  }

 private:
  XConnection x_;
  ClientWindow panel_;
  xcb_window_t window_;
  xcb_window_t icon_ = XCB_NONE;
};

}  // namespace hushpane::x11_tests

#pragma once

#include <fstream>

#include "tests/x11/process.h"
#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {

// openbox with two workspaces and nothing bound but a click that brings a window to the front.
class WindowManager {
 public:
  WindowManager(const Environment& environment, const std::filesystem::path& folder, const XConnection& x)
      : process_({"openbox", "--config-file", configuration(folder)}, environment, folder) {
    const xcb_window_t window = xcb_generate_id(x.get());
    xcb_create_window(x.get(), XCB_COPY_FROM_PARENT, window, x.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    if (!waitUntil([&] { return answers(x, window); })) {
      throw std::runtime_error("openbox did not start: " + process_.errors());
    }
    xcb_destroy_window(x.get(), window);
  }

 private:
  // A manager that tells how it would frame a window has begun to handle requests; earlier ones may be lost.
  static bool answers(const XConnection& x, xcb_window_t window) {
    xcb_client_message_event_t question{};
    question.response_type = XCB_CLIENT_MESSAGE;
    question.format = 32;
    question.window = window;
    question.type = x.atom("_NET_REQUEST_FRAME_EXTENTS");
    xcb_send_event(x.get(), 0, x.root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&question));
    return !x.numbers(window, "_NET_FRAME_EXTENTS").empty();
  }

  static std::string configuration(const std::filesystem::path& folder) {
    const std::filesystem::path file = folder / "openbox.xml";
    std::ofstream(file) << R"(<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <theme><name>Clearlooks</name><animateIconify>no</animateIconify></theme>
  <desktops><number>2</number><popupTime>0</popupTime></desktops>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
</openbox_config>
)";
    return file.string();
  }

  Process process_;
};

}  // namespace hushpane::x11_tests

#include "desktops/x11/own_window.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>

namespace hushpane::x11 {

namespace {

constexpr std::string_view windowClass{"hushpane\0Hushpane\0", 18};
constexpr std::uint32_t allWorkspaces = 0xffffffff;

}  // namespace

void introduceOwnWindow(Connection& connection, xcb_window_t window, std::string_view name) {
  const auto setText = [&](xcb_atom_t property, xcb_atom_t type, std::string_view text) {
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
  };
  setText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, windowClass);
  setText(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, name);
  setText(connection.atom("_NET_WM_NAME"), connection.atom("UTF8_STRING"), name);
  setWindowNumber(connection, window, "_NET_WM_PID", XCB_ATOM_CARDINAL, static_cast<std::uint32_t>(getpid()));
  setWindowNumber(connection, window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, allWorkspaces);
  setWindowNumber(connection, window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM,
                  connection.atom("_NET_WM_WINDOW_TYPE_DOCK"));
}

void setWindowNumber(Connection& connection, xcb_window_t window, std::string_view property, xcb_atom_t type,
                     std::uint32_t value) {
  xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, connection.atom(property), type, 32, 1, &value);
}

void publishOpacity(Connection& connection, xcb_window_t window, double opacity) {
  constexpr std::string_view property = "_NET_WM_WINDOW_OPACITY";
  if (opacity >= 1) {
    xcb_delete_property(connection.get(), window, connection.atom(property));
    return;
  }
  const auto value = static_cast<std::uint32_t>(std::llround(std::clamp(opacity, 0.0, 1.0) * 0xffffffff));
  setWindowNumber(connection, window, property, XCB_ATOM_CARDINAL, value);
}

}  // namespace hushpane::x11

#include "desktops/x11/own_window.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

#include "desktops/x11/root_bounds.h"

namespace hushpane::x11 {

namespace {

constexpr std::string_view windowClass{"hushpane\0Hushpane\0", 18};
constexpr std::uint32_t allWorkspaces = 0xffffffff;

void setWindowNumbers(Connection& connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                      std::span<const std::uint32_t> values) {
  xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                      static_cast<std::uint32_t>(values.size()), values.data());
}

}  // namespace

void introduceOwnWindow(Connection& connection, xcb_window_t window, std::string_view name, std::string_view type) {
  const auto setText = [&](xcb_atom_t property, xcb_atom_t type, std::string_view text) {
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
  };
  setText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, windowClass);
  setText(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, name);
  setText(connection.atom("_NET_WM_NAME"), connection.atom("UTF8_STRING"), name);
  setWindowNumber(connection, window, "_NET_WM_PID", XCB_ATOM_CARDINAL, static_cast<std::uint32_t>(getpid()));
  setWindowNumber(connection, window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, allWorkspaces);
  setWindowNumber(connection, window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, connection.atom(type));
}

void introduceToManager(Connection& connection, xcb_window_t window, const PixelRect& bounds, bool isBeneath) {
  std::vector<std::uint32_t> states;
  for (const auto name : {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER", "_NET_WM_STATE_STICKY"})
    states.push_back(connection.atom(name));
  if (isBeneath) states.push_back(connection.atom("_NET_WM_STATE_BELOW"));
  setWindowNumbers(connection, window, connection.atom("_NET_WM_STATE"), XCB_ATOM_ATOM, states);

  constexpr std::uint32_t hasInput = 1, hasState = 2, normalState = 1;
  const std::array<std::uint32_t, 9> hints{hasInput | hasState, 0, normalState};
  setWindowNumbers(connection, window, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, hints);

  // A size that cannot change keeps some managers from maximising a window as large as the display.
  constexpr std::uint32_t userPosition = 1, userSize = 2, smallest = 16, largest = 32;
  const auto x = static_cast<std::uint32_t>(bounds.x), y = static_cast<std::uint32_t>(bounds.y);
  const auto width = static_cast<std::uint32_t>(bounds.width), height = static_cast<std::uint32_t>(bounds.height);
  const std::array<std::uint32_t, 18> size{
      userPosition | userSize | smallest | largest, x, y, width, height, width, height, width, height};
  setWindowNumbers(connection, window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, size);

  constexpr std::uint32_t hasDecorations = 2;
  const auto motif = connection.atom("_MOTIF_WM_HINTS");
  setWindowNumbers(connection, window, motif, motif, std::array<std::uint32_t, 5>{hasDecorations});
}

PixelRect managedBounds(Connection& connection, const PixelRect& bounds) {
  auto managed = bounds;
  managed.height = std::max(bounds.height, rootBounds(connection).height) + 1;
  return managed;
}

void forbidBypass(Connection& connection, xcb_window_t window) {
  constexpr std::uint32_t never = 2;
  setWindowNumber(connection, window, "_NET_WM_BYPASS_COMPOSITOR", XCB_ATOM_CARDINAL, never);
}

void configureBounds(Connection& connection, xcb_window_t window, const PixelRect& bounds) {
  const std::array<std::uint32_t, 4> values{static_cast<std::uint32_t>(bounds.x), static_cast<std::uint32_t>(bounds.y),
                                            static_cast<std::uint32_t>(bounds.width),
                                            static_cast<std::uint32_t>(bounds.height)};
  xcb_configure_window(connection.get(), window,
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                       values.data());
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

#include "tests/x11/x_connection.h"

#include <xcb/res.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <stdexcept>

namespace hushpane::x11_tests {

XConnection::XConnection(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr), &xcb_disconnect) {
  if (xcb_connection_has_error(get())) throw std::runtime_error("no X server at " + display);
  screen_ = xcb_setup_roots_iterator(xcb_get_setup(get())).data;
}

xcb_atom_t XConnection::atom(const std::string& name) const {
  const auto reply = own(xcb_intern_atom_reply(
      get(), xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.c_str()), nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

static std::string propertyBytes(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property) {
  const auto cookie = xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 4096);
  const auto reply = own(xcb_get_property_reply(connection, cookie, nullptr));
  if (!reply) return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())),
          static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

std::vector<std::uint32_t> XConnection::numbers(xcb_window_t window, const std::string& property) const {
  const std::string bytes = propertyBytes(get(), window, atom(property));
  std::vector<std::uint32_t> result(bytes.size() / sizeof(std::uint32_t));
  if (!result.empty()) std::memcpy(result.data(), bytes.data(), result.size() * sizeof(std::uint32_t));
  return result;
}

std::string XConnection::text(xcb_window_t window, const std::string& property) const {
  return propertyBytes(get(), window, atom(property));
}

void XConnection::setNumbers(xcb_window_t window, const std::string& property, const std::string& type,
                             const std::vector<std::uint32_t>& values) const {
  xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 32,
                      static_cast<std::uint32_t>(values.size()), values.data());
  sync();
}

// A window manager that names no active window (EWMH) gives it the keyboard all the same.
xcb_window_t XConnection::activeWindow() const {
  if (const auto value = numbers(root(), "_NET_ACTIVE_WINDOW"); !value.empty()) return value.front();
  const auto focus = own(xcb_get_input_focus_reply(get(), xcb_get_input_focus(get()), nullptr));
  return focus && focus->focus > XCB_INPUT_FOCUS_POINTER_ROOT ? focus->focus : xcb_window_t{XCB_NONE};
}

xcb_window_t XConnection::windowTitled(const std::string& title) const {
  const auto windows = managedWindows();
  const auto found = std::find_if(windows.begin(), windows.end(),
                                  [&](xcb_window_t window) { return text(window, "WM_NAME") == title; });
  return found == windows.end() ? xcb_window_t{XCB_NONE} : *found;
}

std::vector<xcb_window_t> XConnection::managedWindows() const {
  std::vector<xcb_window_t> found;
  const std::function<void(xcb_window_t, int)> search = [&](xcb_window_t parent, int depth) {
    for (const xcb_window_t child : children(parent)) {
      if (!numbers(child, "WM_STATE").empty()) {
        found.push_back(child);
      } else if (depth > 1) {
        search(child, depth - 1);
      }
    }
  };
  constexpr int deepestFrame = 4;
  search(root(), deepestFrame);
  return found;
}

xcb_window_t XConnection::frameOf(xcb_window_t window) const {
  for (;;) {
    const auto tree = own(xcb_query_tree_reply(get(), xcb_query_tree(get(), window), nullptr));
    if (!tree) return XCB_NONE;
    if (tree->parent == root() || tree->parent == XCB_NONE) return window;
    window = tree->parent;
  }
}

pid_t XConnection::processOf(xcb_window_t window) const {
  xcb_res_client_id_spec_t maker{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const auto reply = own(xcb_res_query_client_ids_reply(get(), xcb_res_query_client_ids(get(), 1, &maker), nullptr));
  if (!reply) return 0;
  const auto id = xcb_res_query_client_ids_ids_iterator(reply.get());
  return id.rem ? static_cast<pid_t>(*xcb_res_client_id_value_value(id.data)) : 0;
}

Rect XConnection::bounds(xcb_window_t window) const {
  const auto size = own(xcb_get_geometry_reply(get(), xcb_get_geometry(get(), window), nullptr));
  const auto place =
      own(xcb_translate_coordinates_reply(get(), xcb_translate_coordinates(get(), window, root(), 0, 0), nullptr));
  if (!size || !place) return {};
  return {double(place->dst_x), double(place->dst_y), double(size->width), double(size->height)};
}

void XConnection::setBounds(xcb_window_t window, const Rect& bounds) const {
  const std::uint32_t values[] = {static_cast<std::uint32_t>(bounds.x), static_cast<std::uint32_t>(bounds.y),
                                  static_cast<std::uint32_t>(bounds.width), static_cast<std::uint32_t>(bounds.height)};
  xcb_configure_window(get(), window,
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                       values);
  sync();
}

bool XConnection::isOnScreen(xcb_window_t window) const {
  const auto reply = own(xcb_get_window_attributes_reply(get(), xcb_get_window_attributes(get(), window), nullptr));
  return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::vector<xcb_window_t> XConnection::children(xcb_window_t window) const {
  const auto tree = own(xcb_query_tree_reply(get(), xcb_query_tree(get(), window), nullptr));
  if (!tree) return {};
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  return {children, children + xcb_query_tree_children_length(tree.get())};
}

Pixel XConnection::pixel(Point point) const {
  return capture({point.x, point.y, 1, 1}).at(0, 0);
}

Picture XConnection::capture(const Rect& area) const {
  const auto width = static_cast<std::uint16_t>(area.width), height = static_cast<std::uint16_t>(area.height);
  const auto cookie = xcb_get_image(get(), XCB_IMAGE_FORMAT_Z_PIXMAP, root(), static_cast<std::int16_t>(area.x),
                                    static_cast<std::int16_t>(area.y), width, height, ~0u);
  const auto reply = own(xcb_get_image_reply(get(), cookie, nullptr));
  if (!reply) throw std::runtime_error("the screen cannot be read");
  Picture picture{width, height, std::vector<std::uint32_t>(std::size_t{width} * height)};
  std::memcpy(picture.pixels.data(), xcb_get_image_data(reply.get()), picture.pixels.size() * sizeof(std::uint32_t));
  for (std::uint32_t& pixel : picture.pixels) pixel &= 0xffffff;
  return picture;
}

Picture XConnection::capture() const {
  return capture({0, 0, double(screen_->width_in_pixels), double(screen_->height_in_pixels)});
}

void XConnection::sync() const {
  own(xcb_get_input_focus_reply(get(), xcb_get_input_focus(get()), nullptr));
}

}  // namespace hushpane::x11_tests

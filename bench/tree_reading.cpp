#include "bench/tree_reading.h"

#include <string_view>

#include "desktops/x11/xcb_handle.h"

namespace hushpane::bench {

namespace {

using x11::Reply;

constexpr std::array<std::string_view, 6> propertyNames{
    "WM_STATE", "_NET_WM_PID", "_NET_WM_DESKTOP", "_NET_WM_STATE", "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_OPACITY"};
constexpr std::uint32_t longestValue = 32;  // words

}  // namespace

TreeReading::TreeReading(xcb_connection_t* connection)
    : connection_(connection), root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root) {
  for (std::size_t index = 0; index < propertyNames.size(); ++index) {
    const auto cookie = xcb_intern_atom(connection, 0, propertyNames[index].size(), propertyNames[index].data());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    if (reply) properties_[index] = reply->atom;
  }
}

std::size_t TreeReading::read() {
  auto windows = childrenOf({root_});
  readPlaces(windows);
  const auto inside = childrenOf(windows);
  windows.insert(windows.end(), inside.begin(), inside.end());
  return readProperties(windows);
}

std::vector<xcb_window_t> TreeReading::childrenOf(const std::vector<xcb_window_t>& windows) {
  std::vector<xcb_query_tree_cookie_t> cookies;
  for (const auto window : windows) cookies.push_back(xcb_query_tree(connection_, window));
  std::vector<xcb_window_t> children;
  for (const auto cookie : cookies) {
    const Reply<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(connection_, cookie, nullptr));
    if (!reply) continue;
    const auto* first = xcb_query_tree_children(reply.get());
    children.insert(children.end(), first, first + xcb_query_tree_children_length(reply.get()));
  }
  return children;
}

void TreeReading::readPlaces(const std::vector<xcb_window_t>& windows) {
  std::vector<xcb_get_geometry_cookie_t> geometries;
  std::vector<xcb_get_window_attributes_cookie_t> attributes;
  for (const auto window : windows) {
    geometries.push_back(xcb_get_geometry(connection_, window));
    attributes.push_back(xcb_get_window_attributes(connection_, window));
  }
  for (std::size_t index = 0; index < windows.size(); ++index) {
    const Reply<xcb_get_geometry_reply_t> place(xcb_get_geometry_reply(connection_, geometries[index], nullptr));
    const Reply<xcb_get_window_attributes_reply_t> state(
        xcb_get_window_attributes_reply(connection_, attributes[index], nullptr));
  }
}

std::size_t TreeReading::readProperties(const std::vector<xcb_window_t>& windows) {
  std::vector<std::array<xcb_get_property_cookie_t, propertyNames.size()>> cookies(windows.size());
  for (std::size_t index = 0; index < windows.size(); ++index)
    for (std::size_t property = 0; property < properties_.size(); ++property)
      cookies[index][property] =
          xcb_get_property(connection_, 0, windows[index], properties_[property], XCB_ATOM_ANY, 0, longestValue);
  std::size_t applications = 0;
  for (const auto& window : cookies) {
    for (std::size_t property = 0; property < window.size(); ++property) {
      const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, window[property], nullptr));
      if (property == 0 && reply && reply->value_len > 0) ++applications;
    }
  }
  return applications;
}

}  // namespace hushpane::bench

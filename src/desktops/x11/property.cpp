#include "desktops/x11/property.h"

#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

std::vector<std::uint32_t> propertyValues(Connection& connection, xcb_window_t window, std::string_view name,
                                          std::uint32_t longest) {
  return propertyValues(connection, askProperty(connection, window, name, longest));
}

std::optional<std::uint32_t> propertyValue(Connection& connection, xcb_window_t window, std::string_view name) {
  const auto values = propertyValues(connection, window, name, 1);
  return values.empty() ? std::nullopt : std::optional(values.front());
}

std::string propertyText(Connection& connection, xcb_window_t window, std::string_view name) {
  constexpr std::uint32_t longest = 64;  // words
  const Reply<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(connection.get(), askProperty(connection, window, name, longest), nullptr));
  if (!reply || reply->format != 8) return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())),
          static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

xcb_get_property_cookie_t askProperty(Connection& connection, xcb_window_t window, std::string_view name,
                                      std::uint32_t longest) {
  return xcb_get_property(connection.get(), 0, window, connection.atom(name), XCB_ATOM_ANY, 0, longest);
}

std::vector<std::uint32_t> propertyValues(Connection& connection, xcb_get_property_cookie_t cookie) {
  const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection.get(), cookie, nullptr));
  if (!reply || reply->format != 32) return {};
  const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {first, first + reply->value_len};
}

}  // namespace hushpane::x11

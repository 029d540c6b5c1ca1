#include "desktops/x11/xwayland.h"

#include <xcb/randr.h>

#include <algorithm>
#include <string_view>

#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

// What servers since 23.1 announce, and how earlier ones name their outputs.
constexpr std::string_view name = "XWAYLAND";

bool hasOutputOfThatName(Connection& connection) {
  auto* const server = connection.get();
  if (!connection.extension(Extension::randr)) return false;
  const Reply<xcb_randr_get_screen_resources_current_reply_t> resources(xcb_randr_get_screen_resources_current_reply(
      server, xcb_randr_get_screen_resources_current(server, connection.root()), nullptr));
  if (!resources) return false;
  const auto* first = xcb_randr_get_screen_resources_current_outputs(resources.get());
  const auto* last = first + xcb_randr_get_screen_resources_current_outputs_length(resources.get());
  return std::any_of(first, last, [&](xcb_randr_output_t output) {
    const Reply<xcb_randr_get_output_info_reply_t> info(
        xcb_randr_get_output_info_reply(server, xcb_randr_get_output_info(server, output, XCB_CURRENT_TIME), nullptr));
    if (!info) return false;
    return std::string_view(reinterpret_cast<const char*>(xcb_randr_get_output_info_name(info.get())),
                            static_cast<std::size_t>(xcb_randr_get_output_info_name_length(info.get())))
        .starts_with(name);
  });
}

}  // namespace

bool isXwayland(Connection& connection) {
  const Reply<xcb_query_extension_reply_t> extension(xcb_query_extension_reply(
      connection.get(), xcb_query_extension(connection.get(), name.size(), name.data()), nullptr));
  return (extension && extension->present) || hasOutputOfThatName(connection);
}

}  // namespace hushpane::x11

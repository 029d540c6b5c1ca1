#include "desktops/x11/screens.h"

#include <xcb/randr.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <tuple>
#include <utility>

#include "desktops/x11/desktop_scale.h"
#include "desktops/x11/display_id.h"
#include "desktops/x11/root_bounds.h"
#include "desktops/x11/struts.h"
#include "desktops/x11/work_area.h"
#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

// A change of the arrangement comes as several events.
constexpr double secondsPerBatch = 0.02;
constexpr std::uint32_t longestEdid = 64;            // words; the base block and one extension
constexpr std::uint32_t longestResources = 1 << 16;  // words

struct Monitor {
  PixelRect bounds;
  bool isPrimary = false;
  std::string name;
  std::string connector;  // empty for a monitor without outputs
  std::vector<std::uint8_t> edid;
};

std::string atomName(xcb_connection_t* connection, xcb_atom_t atom) {
  const Reply<xcb_get_atom_name_reply_t> reply(
      xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, atom), nullptr));
  if (!reply) return {};
  return {xcb_get_atom_name_name(reply.get()), static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

void readOutput(Connection& connection, xcb_randr_output_t output, Monitor& monitor) {
  auto* const server = connection.get();
  const auto infoCookie = xcb_randr_get_output_info(server, output, XCB_CURRENT_TIME);
  const auto edidCookie =
      xcb_randr_get_output_property(server, output, connection.atom("EDID"), XCB_ATOM_ANY, 0, longestEdid, 0, 0);
  const Reply<xcb_randr_get_output_info_reply_t> info(xcb_randr_get_output_info_reply(server, infoCookie, nullptr));
  const Reply<xcb_randr_get_output_property_reply_t> edid(
      xcb_randr_get_output_property_reply(server, edidCookie, nullptr));
  if (info) {
    monitor.connector.assign(reinterpret_cast<const char*>(xcb_randr_get_output_info_name(info.get())),
                             static_cast<std::size_t>(xcb_randr_get_output_info_name_length(info.get())));
  }
  if (edid && edid->format == 8) {
    const auto* bytes = xcb_randr_get_output_property_data(edid.get());
    monitor.edid.assign(bytes, bytes + xcb_randr_get_output_property_data_length(edid.get()));
  }
}

std::vector<Monitor> readMonitors(Connection& connection) {
  std::vector<Monitor> monitors;
  if (!connection.extension(Extension::randr)) return monitors;
  const Reply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
      connection.get(), xcb_randr_get_monitors(connection.get(), connection.root(), 1), nullptr));
  if (!reply) return monitors;
  for (auto each = xcb_randr_get_monitors_monitors_iterator(reply.get()); each.rem;
       xcb_randr_monitor_info_next(&each)) {
    const auto& info = *each.data;
    Monitor monitor;
    monitor.bounds = {info.x, info.y, info.width, info.height};
    monitor.isPrimary = info.primary != 0;
    monitor.name = atomName(connection.get(), info.name);
    if (xcb_randr_monitor_info_outputs_length(&info) > 0)
      readOutput(connection, xcb_randr_monitor_info_outputs(&info)[0], monitor);
    // A mirror of another monitor shows what that one shows.
    const bool isMirror =
        std::ranges::any_of(monitors, [&](const Monitor& known) { return known.bounds == monitor.bounds; });
    if (!monitor.bounds.isEmpty() && !isMirror) monitors.push_back(std::move(monitor));
  }
  return monitors;
}

// A server without monitors is one screen.
Monitor wholeRoot(Connection& connection) {
  Monitor monitor;
  monitor.bounds = rootBounds(connection);
  monitor.name = "screen";
  return monitor;
}

double readScale(Connection& connection) {
  const auto cookie = xcb_get_property(connection.get(), 0, connection.root(), XCB_ATOM_RESOURCE_MANAGER,
                                       XCB_ATOM_STRING, 0, longestResources);
  const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection.get(), cookie, nullptr));
  if (!reply || reply->format != 8) return 1;
  return scaleIn({static_cast<const char*>(xcb_get_property_value(reply.get())),
                  static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))});
}

platform::DisplayId idOf(const Monitor& monitor) {
  return displayIdOf(monitor.connector.empty() ? monitor.name : monitor.connector, monitor.edid);
}

std::string localizedNameOf(const Monitor& monitor) {
  auto product = productNameOf(monitor.edid);
  return product.empty() ? monitor.name : product;
}

}  // namespace

Screens::Screens(Connection& connection, platform::MainQueue& queue, platform::NotificationCenter& center)
    : connection_(connection), queue_(queue), center_(center) {
  if (connection_.extension(Extension::randr)) {
    xcb_randr_select_input(
        connection_.get(), connection_.root(),
        XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
  }
  connection_.selectRootEvents(XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
  events_ = connection_.addEventHandler([this](const auto& event) { handle(event); });
  read();
}

void Screens::handle(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  const auto randr = connection_.extension(Extension::randr);
  if (randr &&
      (type == randr->firstEvent + XCB_RANDR_SCREEN_CHANGE_NOTIFY || type == randr->firstEvent + XCB_RANDR_NOTIFY))
    changed();
  if (type == XCB_CONFIGURE_NOTIFY &&
      reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == connection_.root())
    changed();
  if (type == XCB_PROPERTY_NOTIFY) {
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (property.window == connection_.root() && property.atom == XCB_ATOM_RESOURCE_MANAGER) changed();
  }
}

void Screens::changed() {
  if (pending_) return;
  pending_ = queue_.after(secondsPerBatch, [this] {
    pending_.reset();
    const auto state = [this] { return std::tuple(screens_, origin_.x, origin_.y, scale_); };
    const auto before = state();
    read();
    if (before != state()) center_.post(platform::notification::screenParametersDidChange);
  });
}

void Screens::read() {
  auto monitors = readMonitors(connection_);
  if (monitors.empty()) monitors.push_back(wholeRoot(connection_));
  std::stable_partition(monitors.begin(), monitors.end(), [](const Monitor& monitor) { return monitor.isPrimary; });
  const auto& main = monitors.front().bounds;
  origin_ = {static_cast<std::int16_t>(main.x), static_cast<std::int16_t>(main.y)};
  scale_ = readScale(connection_);
  screens_.clear();
  for (const auto& monitor : monitors)
    screens_.push_back({toPoints(monitor.bounds), idOf(monitor), localizedNameOf(monitor), scale_});
}

platform::Rect Screens::visibleFrame(const platform::Screen& screen) const {
  return toPoints(freeArea(toPixels(screen.frame), readStruts(connection_), readWorkAreas(connection_)));
}

PixelRect Screens::toPixels(const platform::Rect& points) const {
  const auto pixels = [this](double length) { return static_cast<int>(std::lround(length * scale_)); };
  const int left = pixels(points.x), top = pixels(points.y);
  return {left + origin_.x, top + origin_.y, pixels(points.right()) - left, pixels(points.bottom()) - top};
}

platform::Rect Screens::toPoints(const PixelRect& pixels) const {
  return {(pixels.x - origin_.x) / scale_, (pixels.y - origin_.y) / scale_, pixels.width / scale_,
          pixels.height / scale_};
}

}  // namespace hushpane::x11

#include "desktops/x11/system_tray.h"

#include <xcb/xfixes.h>

#include <string>

#include "desktops/x11/property.h"
#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

constexpr std::uint32_t requestDock = 0;  // SYSTEM_TRAY_REQUEST_DOCK
constexpr std::uint32_t colorsLength = 12;

}  // namespace

SystemTray::SystemTray(Connection& connection)
    : connection_(connection),
      selection_(connection.atom("_NET_SYSTEM_TRAY_S" + std::to_string(connection.screenNumber()))) {
  connection_.selectRootEvents(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
  xcb_xfixes_select_selection_input(connection_.get(), connection_.root(), selection_,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  events_ = connection_.addEventHandler([this](const auto& event) { handle(event); });
  readManager();
}

xcb_visualid_t SystemTray::iconVisual() const {
  const auto visual = propertyValue(connection_, manager_, "_NET_SYSTEM_TRAY_VISUAL").value_or(XCB_NONE);
  return visual == XCB_NONE ? connection_.screen().root_visual : visual;
}

// The foreground comes first, in 16 bits a channel.
std::optional<platform::Color> SystemTray::foreground() const {
  const auto colors = propertyValues(connection_, manager_, "_NET_SYSTEM_TRAY_COLORS", colorsLength);
  if (colors.size() < 3) return std::nullopt;
  const auto channel = [](std::uint32_t value) { return (value & 0xffff) / 65535.0; };
  return platform::Color{channel(colors[0]), channel(colors[1]), channel(colors[2])};
}

void SystemTray::dock(xcb_window_t icon) {
  if (manager_ == XCB_WINDOW_NONE) return;
  xcb_client_message_event_t request{};
  request.response_type = XCB_CLIENT_MESSAGE;
  request.format = 32;
  request.window = manager_;
  request.type = connection_.atom("_NET_SYSTEM_TRAY_OPCODE");
  request.data.data32[0] = XCB_CURRENT_TIME;
  request.data.data32[1] = requestDock;
  request.data.data32[2] = icon;
  xcb_send_event(connection_.get(), 0, manager_, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&request));
}

// A tray takes the selection first and says that it manages when it is ready for icons.
void SystemTray::handle(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  const auto xfixes = connection_.extension(Extension::xfixes);
  if (xfixes && type == xfixes->firstEvent + XCB_XFIXES_SELECTION_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (notify.selection == selection_ && manager_ != XCB_WINDOW_NONE && notify.owner != manager_)
      setManager(XCB_WINDOW_NONE);
  }
  if (type == XCB_CLIENT_MESSAGE) {
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.type == connection_.atom("MANAGER") && message.data.data32[1] == selection_) readManager();
  }
  if (type == XCB_PROPERTY_NOTIFY) {
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (property.window == manager_ && property.atom == connection_.atom("_NET_SYSTEM_TRAY_COLORS"))
      colors_.forEach([](const auto& handler) { handler(); });
  }
}

void SystemTray::readManager() {
  const Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
      connection_.get(), xcb_get_selection_owner(connection_.get(), selection_), nullptr));
  setManager(owner ? owner->owner : xcb_window_t{XCB_WINDOW_NONE});
}

void SystemTray::setManager(xcb_window_t manager) {
  manager_ = manager;
  // What the window tree asks of windows too: either may come last.
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  if (manager_ != XCB_WINDOW_NONE) xcb_change_window_attributes(connection_.get(), manager_, XCB_CW_EVENT_MASK, &mask);
  changes_.forEach([](const auto& handler) { handler(); });
}

}  // namespace hushpane::x11

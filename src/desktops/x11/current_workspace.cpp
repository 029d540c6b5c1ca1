#include "desktops/x11/current_workspace.h"

#include <string_view>
#include <utility>

#include "desktops/x11/property.h"

namespace hushpane::x11 {

namespace {
constexpr std::string_view name = "_NET_CURRENT_DESKTOP";
}

CurrentWorkspace::CurrentWorkspace(Connection& connection) : connection_(connection) {
  connection_.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE);
  events_ = connection_.addEventHandler([this](const auto& event) { handle(event); });
  workspace_ = propertyValue(connection_, connection_.root(), name);
}

void CurrentWorkspace::handle(const xcb_generic_event_t& event) {
  if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) return;
  const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
  if (property.window != connection_.root() || property.atom != connection_.atom(name)) return;
  const auto current = propertyValue(connection_, connection_.root(), name);
  if (std::exchange(workspace_, current) != current) handlers_.forEach([](const auto& handler) { handler(); });
}

}  // namespace hushpane::x11

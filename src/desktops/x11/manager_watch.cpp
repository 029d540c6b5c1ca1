#include "desktops/x11/manager_watch.h"

#include <utility>

#include "desktops/x11/property.h"

namespace hushpane::x11 {

namespace {
constexpr std::string_view checkProperty = "_NET_SUPPORTING_WM_CHECK";
constexpr std::string_view supportedProperty = "_NET_SUPPORTED";
constexpr std::uint32_t longestList = 1024;
}  // namespace

ManagerWatch::ManagerWatch(Connection& connection, platform::MainQueue& queue)
    : connection_(connection), queue_(queue) {
  connection_.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
  events_ = connection_.addEventHandler([this](const auto& event) { handle(event); });
  read();
}

bool ManagerWatch::supports(std::string_view hint) const {
  return supported_.contains(connection_.atom(hint));
}

// Every client of the server has a range of numbers of its own for what it makes.
bool ManagerWatch::owns(xcb_window_t window) const {
  const auto client = ~xcb_get_setup(connection_.get())->resource_id_mask;
  return isRunning() && (window & client) == (checkWindow_ & client);
}

void ManagerWatch::handle(const xcb_generic_event_t& event) {
  const auto readSoon = [this] { reading_ = queue_.after(0, [this] { read(); }); };
  switch (event.response_type & 0x7f) {
    case XCB_DESTROY_NOTIFY:
      if (reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == checkWindow_ && isRunning()) readSoon();
      break;
    case XCB_PROPERTY_NOTIFY: {
      const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
      if (property.window != connection_.root()) break;
      if (property.atom == connection_.atom(checkProperty) || property.atom == connection_.atom(supportedProperty))
        readSoon();
      break;
    }
    default: break;
  }
}

void ManagerWatch::read() {
  const auto check = readCheckWindow();
  std::set<xcb_atom_t> supported;
  if (check != XCB_WINDOW_NONE)
    for (const auto atom : propertyValues(connection_, connection_.root(), supportedProperty, longestList))
      supported.insert(atom);
  if (check == checkWindow_ && supported == supported_) return;
  checkWindow_ = check;
  name_ = propertyText(connection_, check, "_NET_WM_NAME");
  supported_ = std::move(supported);
  handlers_.forEach([](const auto& handler) { handler(); });
}

// The root may still name the window of a manager that is gone; a living one's window names itself.
xcb_window_t ManagerWatch::readCheckWindow() {
  const auto named = propertyValue(connection_, connection_.root(), checkProperty);
  if (!named || propertyValue(connection_, *named, checkProperty) != named) return XCB_WINDOW_NONE;
  return *named;
}

}  // namespace hushpane::x11

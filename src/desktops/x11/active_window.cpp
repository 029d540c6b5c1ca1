#include "desktops/x11/active_window.h"

#include <utility>

#include "desktops/x11/property.h"
#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {
constexpr std::string_view property = "_NET_ACTIVE_WINDOW";
constexpr int deepestWindow = 32;
}  // namespace

ActiveWindow::ActiveWindow(Connection& connection, platform::MainQueue& queue, ManagerWatch& manager, WindowTree& tree)
    : connection_(connection), queue_(queue), manager_(manager), tree_(tree) {
  connection_.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
  events_ = connection_.addEventHandler([this](const auto& event) { handle(event); });
  managerChanges_ = manager_.addChangeHandler([this] { invalidate(); });
}

// The tree watches the focus of every window that it knows.
void ActiveWindow::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & 0x7f) {
    case XCB_PROPERTY_NOTIFY: {
      const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
      if (change.window != connection_.root() || change.atom != connection_.atom(property)) return;
      isKnown_ = false;
      handlers_.forEach([](const auto& handler) { handler(); });
      return;
    }
    case XCB_ENTER_NOTIFY:
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
      if (!manager_.isRunning()) invalidate();
      return;
    default: return;
  }
}

void ActiveWindow::invalidate() {
  isKnown_ = false;
  notice_ = queue_.after(0, [this] { handlers_.forEach([](const auto& handler) { handler(); }); });
}

xcb_window_t ActiveWindow::get() {
  if (!std::exchange(isKnown_, true)) window_ = manager_.isRunning() ? readPublished() : readFocused();
  return window_;
}

xcb_window_t ActiveWindow::readPublished() const {
  return propertyValue(connection_, connection_.root(), property).value_or(XCB_WINDOW_NONE);
}

xcb_window_t ActiveWindow::readFocused() {
  tree_.entries();  // from now on the focus is watched
  const Reply<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(connection_.get(), xcb_get_input_focus(connection_.get()), nullptr));
  if (!reply || reply->focus == XCB_INPUT_FOCUS_NONE) return XCB_WINDOW_NONE;
  const auto focus = reply->focus == XCB_INPUT_FOCUS_POINTER_ROOT || reply->focus == connection_.root()
                         ? childUnderPointer()
                         : topLevelAround(reply->focus);
  const auto* entry = tree_.topLevelOf(focus);
  return entry ? entry->clientOrSelf() : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_window_t ActiveWindow::childUnderPointer() const {
  const Reply<xcb_query_pointer_reply_t> reply(
      xcb_query_pointer_reply(connection_.get(), xcb_query_pointer(connection_.get(), connection_.root()), nullptr));
  return reply ? reply->child : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_window_t ActiveWindow::topLevelAround(xcb_window_t window) const {
  for (int level = 0; level < deepestWindow; ++level) {
    const Reply<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(connection_.get(), xcb_query_tree(connection_.get(), window), nullptr));
    if (!reply) break;
    if (reply->parent == connection_.root()) return window;
    window = reply->parent;
  }
  return XCB_WINDOW_NONE;
}

}  // namespace hushpane::x11

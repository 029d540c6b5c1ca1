#include "desktops/x11/compositor_watch.h"

#include <xcb/xfixes.h>

#include <utility>

#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {
// A compositor takes the selection before it shows its first frame.
constexpr double secondsToTakeOver = 1;
}  // namespace

CompositorWatch::CompositorWatch(Connection& connection, platform::MainQueue& queue)
    : connection_(connection),
      queue_(queue),
      selection_(connection.atom("_NET_WM_CM_S" + std::to_string(connection.screenNumber()))) {
  connection_.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE);
  xcb_xfixes_select_selection_input(connection_.get(), connection_.root(), selection_,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  events_ = connection_.addEventHandler([this](const auto& event) { handle(event); });
  const Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
      connection_.get(), xcb_get_selection_owner(connection_.get(), selection_), nullptr));
  if (owner) owner_ = owner->owner;
  isRunning_ = owner_ != XCB_WINDOW_NONE;
  blurs_ = readBlur();
}

void CompositorWatch::handle(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  const auto xfixes = connection_.extension(Extension::xfixes);
  if (xfixes && type == xfixes->firstEvent + XCB_XFIXES_SELECTION_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (notify.selection == selection_) ownerChanged(notify.owner);
  }
  if (type == XCB_PROPERTY_NOTIFY) {
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (property.window != connection_.root()) return;
    if (property.atom != connection_.atom("_KDE_NET_WM_BLUR_BEHIND_REGION")) return;
    const bool blurs = property.state == XCB_PROPERTY_NEW_VALUE;
    if (std::exchange(blurs_, blurs) != blurs) handlers_.forEach([](const auto& handler) { handler(); });
  }
}

void CompositorWatch::ownerChanged(xcb_window_t owner) {
  start_.reset();
  if (std::exchange(owner_, owner) != owner && isRunning_ && owner != XCB_WINDOW_NONE)
    handlers_.forEach([](const auto& handler) { handler(); });
  if (owner == XCB_WINDOW_NONE) return setRunning(false);
  if (!isRunning_) start_ = queue_.after(secondsToTakeOver, [this] { setRunning(true); });
}

void CompositorWatch::setRunning(bool isRunning) {
  if (std::exchange(isRunning_, isRunning) != isRunning) handlers_.forEach([](const auto& handler) { handler(); });
}

bool CompositorWatch::readBlur() {
  const auto cookie = xcb_get_property(connection_.get(), 0, connection_.root(),
                                       connection_.atom("_KDE_NET_WM_BLUR_BEHIND_REGION"), XCB_ATOM_ANY, 0, 0);
  const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_.get(), cookie, nullptr));
  return reply && reply->type != XCB_ATOM_NONE;
}

}  // namespace hushpane::x11

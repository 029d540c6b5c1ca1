#include "desktops/x11/workspace.h"

#include <string_view>

#include "desktops/session/desktop_picture.h"
#include "desktops/x11/property.h"
#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

// Window managers name no active window for a moment while they switch from one to another.
constexpr double secondsBetweenWindows = 0.1;
constexpr std::uint32_t longestName = 64;  // words
constexpr std::string_view currentProperty = "_NET_CURRENT_DESKTOP";

}  // namespace

Workspace::Workspace(Connection& connection, platform::MainQueue& queue, WindowTree& tree, ActiveWindow& active,
                     session::UrlOpener& urls)
    : connection_(connection), queue_(queue), tree_(tree), active_(active), urls_(urls) {
  connection_.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE);
  events_ = connection_.addEventHandler([this](const auto& event) { handle(event); });
  activeChanges_ = active_.addChangeHandler([this] { activeWindowChanged(); });
  activeWindow_ = active_.get();
  currentWorkspace_ = propertyValue(connection_, connection_.root(), currentProperty);
}

void Workspace::handle(const xcb_generic_event_t& event) {
  if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) return;
  const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
  if (property.window == connection_.root() && property.atom == connection_.atom(currentProperty))
    readCurrentWorkspace();
}

void Workspace::activeWindowChanged() {
  const auto window = active_.get();
  deactivation_.reset();
  if (window == activeWindow_) return;
  if (window != XCB_WINDOW_NONE) return activate(window);
  deactivation_ = queue_.after(secondsBetweenWindows, [this] { activate(XCB_WINDOW_NONE); });
}

void Workspace::activate(xcb_window_t window) {
  activeWindow_ = window;
  frontmost_.reset();
  center_.post(platform::notification::didActivateApplication);
}

void Workspace::readCurrentWorkspace() {
  const auto current = propertyValue(connection_, connection_.root(), currentProperty);
  if (current == currentWorkspace_) return;
  currentWorkspace_ = current;
  center_.post(platform::notification::activeSpaceDidChange);
}

std::optional<platform::RunningApplication> Workspace::frontmostApplication() {
  if (activeWindow_ == XCB_WINDOW_NONE) return std::nullopt;
  if (!frontmost_) {
    if (const auto pid = tree_.pidOf(activeWindow_))
      frontmost_ = platform::RunningApplication{*pid, nameOf(activeWindow_)};
  }
  return frontmost_;
}

std::optional<std::filesystem::path> Workspace::desktopImageURL(const platform::Screen& screen) {
  return session::desktopPicture(screen);
}

// The class part of WM_CLASS, which follows the instance part and its terminator.
std::string Workspace::nameOf(xcb_window_t window) {
  const auto cookie =
      xcb_get_property(connection_.get(), 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, longestName);
  const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_.get(), cookie, nullptr));
  if (!reply) return {};
  const std::string_view both(static_cast<const char*>(xcb_get_property_value(reply.get())),
                              static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
  const auto separator = both.find('\0');
  if (separator == std::string_view::npos) return std::string(both);
  const auto rest = both.substr(separator + 1);
  return std::string(rest.substr(0, rest.find('\0')));
}

}  // namespace hushpane::x11

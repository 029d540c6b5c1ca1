#include "desktops/x11/workspace.h"

#include <string_view>

#include "desktops/session/desktop_picture.h"
#include "desktops/x11/property.h"

namespace hushpane::x11 {

namespace {

// Window managers name no active window for a moment while they switch from one to another.
constexpr double secondsBetweenWindows = 0.1;

}  // namespace

Workspace::Workspace(Connection& connection, platform::MainQueue& queue, WindowTree& tree, ActiveWindow& active,
                     CurrentWorkspace& current, session::UrlOpener& urls)
    : connection_(connection), queue_(queue), tree_(tree), active_(active), urls_(urls) {
  activeChanges_ = active_.addChangeHandler([this] { activeWindowChanged(); });
  workspaceChanges_ = current.addChangeHandler([this] { center_.post(platform::notification::activeSpaceDidChange); });
  activeWindow_ = active_.get();
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

// Who clicks on the desktop works in no application, also where a file manager draws the desktop.
std::optional<platform::RunningApplication> Workspace::frontmostApplication() {
  const auto* entry = tree_.topLevelOf(activeWindow_);
  if (activeWindow_ == XCB_WINDOW_NONE || (entry && entry->facts.kind == WindowKind::desktop)) return std::nullopt;
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
  const std::string text = propertyText(connection_, window, "WM_CLASS");
  const std::string_view both = text;
  const auto separator = both.find('\0');
  if (separator == std::string_view::npos) return std::string(both);
  const auto rest = both.substr(separator + 1);
  return std::string(rest.substr(0, rest.find('\0')));
}

}  // namespace hushpane::x11

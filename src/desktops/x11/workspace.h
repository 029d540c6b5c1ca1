#pragma once

#include <optional>

#include "desktops/session/open_url.h"
#include "desktops/x11/active_window.h"
#include "desktops/x11/connection.h"
#include "desktops/x11/current_workspace.h"
#include "desktops/x11/window_tree.h"
#include "platform/main_queue.h"
#include "platform/workspace.h"

namespace hushpane::x11 {

// The application in front and the workspace that is shown (EWMH).
class Workspace : public platform::Workspace {
 public:
  Workspace(Connection& connection, platform::MainQueue& queue, WindowTree& tree, ActiveWindow& active,
            CurrentWorkspace& current, session::UrlOpener& urls);

  std::optional<platform::RunningApplication> frontmostApplication() override;
  std::optional<std::filesystem::path> desktopImageURL(const platform::Screen& screen) override;
  bool openURL(const std::string& url) override { return urls_.open(url); }
  platform::NotificationCenter& notificationCenter() override { return center_; }

  xcb_window_t activeWindow() const { return activeWindow_; }

 private:
  void activeWindowChanged();
  void activate(xcb_window_t window);
  std::string nameOf(xcb_window_t window);

  Connection& connection_;
  platform::MainQueue& queue_;
  WindowTree& tree_;
  ActiveWindow& active_;
  session::UrlOpener& urls_;
  platform::NotificationCenter center_;
  xcb_window_t activeWindow_ = XCB_WINDOW_NONE;
  std::optional<platform::RunningApplication> frontmost_;
  platform::WorkItem deactivation_;
  platform::Token activeChanges_;
  platform::Token workspaceChanges_;
};

}  // namespace hushpane::x11

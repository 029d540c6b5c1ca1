#pragma once

#include <vector>

#include "desktops/x11/screens.h"
#include "desktops/x11/window_tree.h"
#include "desktops/x11/workspace.h"
#include "platform/window_list.h"

namespace hushpane::x11 {

// What the window tree shows of the applications. A window's number is its application's window, not the frame.
class WindowList : public platform::WindowList {
 public:
  WindowList(Connection& connection, WindowTree& tree, const Screens& screens, const Workspace& workspace)
      : connection_(connection), tree_(tree), screens_(screens), workspace_(workspace) {}

  std::optional<std::span<const platform::WindowInfo>> onScreenWindows() override;

 private:
  void bringActiveForward();
  bool isListed(const StackEntry& entry) const;
  platform::WindowInfo describe(const StackEntry& entry) const;

  Connection& connection_;
  WindowTree& tree_;
  const Screens& screens_;
  const Workspace& workspace_;
  std::vector<platform::WindowInfo> windows_;
  std::uint64_t revision_ = 0;
  xcb_window_t activeShown_ = XCB_WINDOW_NONE;
  platform::Rect origin_;
};

}  // namespace hushpane::x11

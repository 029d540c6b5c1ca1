#include "desktops/x11/window_list.h"

#include <algorithm>

namespace hushpane::x11 {

std::optional<std::span<const platform::WindowInfo>> WindowList::onScreenWindows() {
  if (connection_.isBroken()) return std::nullopt;
  const auto& entries = tree_.entries();
  const auto origin = screens_.toPoints({0, 0, 1, 1});  // and the scale
  const bool isCurrent =
      revision_ == tree_.revision() && activeShown_ == workspace_.activeWindow() && origin_ == origin;
  if (!isCurrent) {
    windows_.clear();
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
      if (isListed(*entry)) windows_.push_back(describe(*entry));
    activeShown_ = workspace_.activeWindow();
    bringActiveForward();
    revision_ = tree_.revision();
    origin_ = origin;
  }
  return windows_;
}

// Where the manager does not raise the active window, it is the front one of its application all the same.
void WindowList::bringActiveForward() {
  const auto active = std::ranges::find(windows_, activeShown_, &platform::WindowInfo::number);
  if (active == windows_.end() || active->layer != 0) return;
  const auto first = std::ranges::find_if(windows_, [&](const platform::WindowInfo& window) {
    return window.ownerPid == active->ownerPid && window.layer == 0;
  });
  std::rotate(first, active, active + 1);
}

bool WindowList::isListed(const StackEntry& entry) const {
  return entry.isOnScreen() && entry.hasFacts && !entry.isOwn && entry.facts.kind != WindowKind::desktop;
}

platform::WindowInfo WindowList::describe(const StackEntry& entry) const {
  const auto points = screens_.toPoints(entry.bodyBounds());
  platform::WindowInfo info;
  info.ownerPid = entry.facts.pid;
  info.layer = layerOf(entry.layerFacts());
  info.alpha = entry.facts.opacity;
  info.bounds = {points.x, points.y, points.width, points.height};
  info.number = entry.clientOrSelf();
  return info;
}

}  // namespace hushpane::x11

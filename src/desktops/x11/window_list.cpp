#include "desktops/x11/window_list.h"

namespace hushpane::x11 {

std::optional<std::span<const platform::WindowInfo>> WindowList::onScreenWindows() {
  if (connection_.isBroken()) return std::nullopt;
  const auto& entries = tree_.entries();
  const auto origin = screens_.toPoints({0, 0, 1, 1});  // and the scale
  const bool isCurrent =
      revision_ == tree_.revision() && workspaceShown_ == workspace_.currentWorkspace() && origin_ == origin;
  if (!isCurrent) {
    windows_.clear();
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
      if (isListed(*entry)) windows_.push_back(describe(*entry));
    revision_ = tree_.revision();
    workspaceShown_ = workspace_.currentWorkspace();
    origin_ = origin;
  }
  return windows_;
}

bool WindowList::isListed(const StackEntry& entry) const {
  if (!entry.isVisible() || !entry.hasFacts || entry.isOwn) return false;
  if (entry.facts.kind == WindowKind::desktop || entry.facts.isHidden) return false;
  const auto shown = workspace_.currentWorkspace();
  return !shown || !entry.facts.workspace || *shown == *entry.facts.workspace;
}

platform::WindowInfo WindowList::describe(const StackEntry& entry) const {
  const auto points = screens_.toPoints(entry.bounds);
  platform::WindowInfo info;
  info.ownerPid = entry.facts.pid;
  info.layer = layerOf(entry.layerFacts());
  info.alpha = entry.facts.opacity;
  info.bounds = {points.x, points.y, points.width, points.height};
  info.number = entry.clientOrSelf();
  return info;
}

}  // namespace hushpane::x11

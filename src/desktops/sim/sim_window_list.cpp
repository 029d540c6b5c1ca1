#include "desktops/sim/sim_window_list.h"

namespace hushpane::sim {

std::optional<std::span<const platform::WindowInfo>> SimWindowList::onScreenWindows() {
  // A new vector each time, so that a list kept for too long is found by the address sanitizer.
  windows_ = {};
  if (!isReadable_) return std::nullopt;
  for (const auto& shown : server_.stack()) windows_.push_back(describe(shown));
  return windows_;
}

platform::WindowInfo SimWindowList::describe(const SimWindowServer::Shown& shown) const {
  const auto& frame = shown.application ? shown.application->frame : shown.own->frame();
  platform::WindowInfo info{
      .ownerPid = shown.application ? shown.application->ownerPid : ownPid_,
      .layer = shown.layer,
      .alpha = shown.application ? shown.application->alpha : shown.own->presentationAlpha(),
      .bounds = {frame.x, frame.y, frame.width, frame.height},
      .number = shown.number,
  };
  if (shown.application && shown.application->disguise) shown.application->disguise(info);
  return info;
}

}  // namespace hushpane::sim

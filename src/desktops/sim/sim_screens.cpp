#include "desktops/sim/sim_screens.h"

#include <algorithm>
#include <utility>

namespace hushpane::sim {

platform::Rect SimScreens::visibleFrame(const platform::Screen& screen) const {
  auto frame = screen.frame;
  if (screens_.empty() || screen != screens_.front()) return frame;
  frame.y += topBar_;
  frame.height -= topBar_ + bottomBar_;
  return frame;
}

void SimScreens::set(std::vector<platform::Screen> screens) {
  screens_ = std::move(screens);
  center_.postFromOutside(platform::notification::screenParametersDidChange);
}

void SimScreens::add(platform::Screen screen) {
  auto screens = screens_;
  screens.push_back(std::move(screen));
  set(std::move(screens));
}

bool SimScreens::change(platform::DisplayId id, const platform::Rect& frame, double scale) {
  auto screens = screens_;
  const auto found = std::ranges::find(screens, id, &platform::Screen::displayId);
  if (found == screens.end()) return false;
  found->frame = frame;
  found->scale = scale;
  set(std::move(screens));
  return true;
}

bool SimScreens::remove(platform::DisplayId id) {
  auto screens = screens_;
  if (std::erase_if(screens, [id](const auto& screen) { return screen.displayId == id; }) == 0) return false;
  set(std::move(screens));
  return true;
}

const platform::Screen* SimScreens::find(platform::DisplayId id) const {
  const auto found = std::ranges::find(screens_, id, &platform::Screen::displayId);
  return found == screens_.end() ? nullptr : &*found;
}

}  // namespace hushpane::sim

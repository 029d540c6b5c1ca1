#include "desktops/x11/overlay_stage.h"

#include <algorithm>

namespace hushpane::x11 {

namespace {
constexpr double secondsPerFrame = 1.0 / 60;
}

OverlayStage::OverlayStage(platform::Animator& animator, platform::MainQueue& queue, TurnEnd& turnEnd,
                           Placement& placement, OverlayServices services)
    : animator_(animator), queue_(queue), turnEnd_(turnEnd), placement_(placement), services_(services) {
  turns_ = turnEnd_.add([this] { show(); });
  treeChanges_ = services_.tree.addChangeHandler([this] {
    if (hasVisible()) request();
  });
  compositorChanges_ = services_.compositor.addChangeHandler([this] { compositorChanged(); });
}

std::unique_ptr<platform::Window> OverlayStage::makeWindow(const platform::Rect& frame,
                                                           const platform::WindowConfiguration& configuration) {
  return std::make_unique<X11Window>(animator_, frame, configuration, services_, *this);
}

void OverlayStage::add(X11Window& window) {
  windows_.push_back(&window);
  services_.tree.addOwn(window.id(), window.bounds());
}

void OverlayStage::remove(X11Window& window) {
  std::erase(windows_, &window);
  services_.tree.removeOwn(window.id());
}

bool OverlayStage::hasVisible() const {
  return std::ranges::any_of(windows_, [](const X11Window* window) { return window->isVisible(); });
}

void OverlayStage::damaged() {
  if (refresh_) return;
  const double wait = shownAt_ + secondsPerFrame - queue_.now();
  if (wait <= 0) return request();
  refresh_ = queue_.after(wait, [this] {
    refresh_.reset();
    request();
  });
}

// What a window shows was meant for a compositor that is gone, or is no longer needed: at once.
void OverlayStage::compositorChanged() {
  for (auto* window : windows_) window->invalidate();
  if (!hasVisible()) return;
  show();
  services_.connection.flush();
}

void OverlayStage::show() {
  for (auto* window : windows_)
    if (!window->isVisible()) window->hide();
  if (!hasVisible()) return refresh_.reset();
  const auto& stack = services_.tree.entries();
  std::vector<X11Window*> visible;
  std::vector<PlacementWish> wishes;
  for (auto* window : windows_) {
    if (!window->isVisible()) continue;
    visible.push_back(window);
    wishes.push_back(window->wish());
  }
  const auto plan = placement_.plan(stack, wishes);
  for (auto* window : visible) window->present(windowsBelow(*window, plan.order));
  placement_.carryOut(plan);
  for (auto* window : visible) window->settle();
  shownAt_ = queue_.now();
}

std::vector<StackEntry> OverlayStage::windowsBelow(const X11Window& window,
                                                   const std::vector<xcb_window_t>& order) const {
  std::vector<StackEntry> below;
  for (const auto id : order) {
    if (id == window.id()) break;
    const auto* entry = services_.tree.topLevelOf(id);
    if (!entry || !entry->isVisible() || entry->isOwn) continue;
    if (!entry->bounds.intersection(window.bounds()).isEmpty()) below.push_back(*entry);
  }
  return below;
}

}  // namespace hushpane::x11

#include "desktops/x11/overlay_stage.h"

#include <algorithm>
#include <utility>

namespace hushpane::x11 {

namespace {
constexpr double secondsPerFrame = 1.0 / 60;
// A compositor may begin to follow a window that it manages only after it was drawn.
constexpr double secondsToTakeIn = 0.1;
const std::vector<xcb_window_t> noWindows;
}  // namespace

OverlayStage::OverlayStage(platform::Animator& animator, platform::MainQueue& queue, TurnEnd& turnEnd,
                           PlacementChoice& placement, OverlayServices services)
    : animator_(animator), queue_(queue), turnEnd_(turnEnd), placement_(placement), services_(services) {
  turns_ = turnEnd_.add([this] { show(); });
  treeChanges_ = services_.tree.addChangeHandler([this] {
    if (hasVisible()) request();
  });
  compositorChanges_ = services_.compositor.addChangeHandler([this] { compositorChanged(); });
  placementChanges_ = placement_.addChangeHandler([this] { request(); });
}

std::unique_ptr<platform::Window> OverlayStage::makeWindow(const platform::Rect& frame,
                                                           const platform::WindowConfiguration& configuration) {
  return std::make_unique<X11Window>(animator_, frame, configuration, services_, *this);
}

void OverlayStage::remove(X11Window& window) {
  std::erase(windows_, &window);
  window.hide(placement_);
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

void OverlayStage::drawAnew() {
  for (auto* window : windows_) window->invalidate();
  request();
}

// What a window shows was meant for a compositor that is gone, or is no longer needed: at once.
void OverlayStage::compositorChanged() {
  for (auto* window : windows_) window->invalidate();
  if (!hasVisible()) return;
  show();
  services_.connection.flush();
}

void OverlayStage::show() {
  recheck_.reset();
  for (auto* window : windows_)
    if (!window->isVisible()) window->hide(placement_);
  if (!hasVisible()) {
    refresh_.reset();
    return tellRest();
  }
  std::vector<X11Window*> visible;
  std::vector<PlacementWish> wishes;
  for (auto* window : windows_) {
    if (!window->isVisible()) continue;
    window->ready(placement_);
    visible.push_back(window);
    wishes.push_back(window->wish());
  }
  const auto plan = placement_.plan(services_.tree.entries(), wishes);
  for (auto* window : visible) {
    const auto clear = plan.clear.find(window->id());
    window->present(windowsBelow(*window, plan.order), clear == plan.clear.end() ? noWindows : clear->second,
                    plan.waiting.contains(window->id()));
  }
  placement_.carryOut(plan);
  bool isRevealed = false;
  for (auto* window : visible) isRevealed |= window->settle();
  if (isRevealed) repaint_ = queue_.after(secondsToTakeIn, [this] { drawAnew(); });
  if (plan.recheck) recheck_ = queue_.after(*plan.recheck, [this] { request(); });
  shownAt_ = queue_.now();
  tellRest();
}

void OverlayStage::tellRest() {
  const auto count = std::ranges::count_if(windows_, &X11Window::isVisible);
  isRestUntold_ |= std::exchange(visibleCount_, count) != count || !animator_.isIdle();
  if (!animator_.isIdle() || !std::exchange(isRestUntold_, false)) return;
  rests_.forEach([](const auto& handler) { handler(); });
}

bool OverlayStage::isCovered(xcb_window_t topLevel, const PixelRect& area) const {
  const auto isCover = [this](const StackEntry& entry) {
    return std::ranges::any_of(windows_, [&](const X11Window* window) {
      const auto* own = window->isVisible() ? services_.tree.topLevelOf(window->id()) : nullptr;
      return own && own->id == entry.id;
    });
  };
  const auto& entries = services_.tree.entries();
  const auto below = std::ranges::find(entries, topLevel, &StackEntry::id);
  return std::any_of(below, entries.end(), [&](const StackEntry& entry) {
    return !entry.bounds.intersection(area).isEmpty() && isCover(entry);
  });
}

std::vector<StackEntry> OverlayStage::windowsBelow(const X11Window& window,
                                                   const std::vector<xcb_window_t>& order) const {
  std::vector<StackEntry> below;
  const auto* own = services_.tree.topLevelOf(window.id());
  for (const auto id : order) {
    if (own && id == own->id) break;
    const auto* entry = services_.tree.topLevelOf(id);
    if (!entry || !entry->isOnScreen() || entry->isOwn) continue;
    if (!entry->bounds.intersection(window.bounds()).isEmpty()) below.push_back(*entry);
  }
  return below;
}

}  // namespace hushpane::x11

#include "app/menu_bar_hint_window_controller.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "app/panel_placement.h"
#include "ui/localized_root.h"
#include "ui/menu/menu_bar_hint_view.h"

namespace hushpane {

namespace {

using platform::Rect;

constexpr platform::Animation appearance{0.3, platform::TimingFunction::easeOut};
constexpr platform::Animation departure{0.2, platform::TimingFunction::easeIn};
constexpr double gap = 1;             // points between the item and the tip of the tail
constexpr double lookInterval = 0.1;  // seconds
constexpr platform::EventMask mouseDown =
    maskOf(platform::EventType::leftMouseDown) | maskOf(platform::EventType::rightMouseDown);

const platform::Screen* screenOf(const Rect& item, const platform::Screens& screens) {
  const auto& all = screens.screens();
  const auto found = std::ranges::find_if(all, [&](const auto& screen) {
    return screen.frame.contains({item.x + item.width / 2, item.y + item.height / 2});
  });
  return found == all.end() ? nullptr : &*found;
}

// The first with a bar, where icons are, else the main one; null without any.
const platform::Screen* screenWithBar(const platform::Screens& screens) {
  const auto& all = screens.screens();
  const auto found =
      std::ranges::find_if(all, [&](const auto& screen) { return screens.visibleFrame(screen) != screen.frame; });
  if (found != all.end()) return &*found;
  return all.empty() ? nullptr : &all.front();
}

// The bubble beneath the middle of the item, or above it where the item is at the bottom; its tail points at the item
// also where the room leaves none for the bubble beneath the middle.
struct Bubble {
  MenuBarHintView view;
  Rect frame;
};

Bubble bubbleAt(const Rect& item, const Rect& display, const Rect& room) {
  MenuBarHintView view;
  const double middle = item.x + item.width / 2;
  const bool isAbove = placement::isAbove(item, display);
  const double wanted = middle - view.pillWidth / 2;
  const double x = std::max(room.x, std::min(wanted, room.right() - view.pillWidth));
  const double y = isAbove ? item.y - gap - view.pillHeight : item.bottom() + gap;
  view.tailOffset = wanted - x;
  if (isAbove) view.tailHeight = -view.tailHeight;
  return {view, {x, y, view.pillWidth, view.pillHeight}};
}

Bubble bubbleFor(const std::optional<Rect>& item, const platform::Screens& screens) {
  if (const auto* screen = item ? screenOf(*item, screens) : nullptr)
    return bubbleAt(*item, screen->frame, screen->frame);
  const auto* screen = screenWithBar(screens);
  const Rect display = screen ? screen->frame : Rect{};
  const Rect visible = screen ? screens.visibleFrame(*screen) : Rect{};
  return bubbleAt(placement::corner(display, visible), display, visible);
}

}  // namespace

MenuBarHintWindowController& MenuBarHintWindowController::shared() {
  return platform::Platform::current().instance<MenuBarHintWindowController>();
}

void MenuBarHintWindowController::show() {
  if (window_ || nextLook_) return;
  lookedSince_ = seenSince_ = platform_.mainQueue().now();
  seen_ = {};
  watchClicks();
  look();
}

void MenuBarHintWindowController::look() {
  auto& item = platform_.statusItem();
  const double now = platform_.mainQueue().now();
  const Sighting sighting{item.isShown(), item.frame()};
  if (std::exchange(seen_, sighting) != sighting) seenSince_ = now;
  const bool isLast = now >= lookedSince_ + patience;
  if (sighting.isShown && (isLast || now >= seenSince_ + stillness)) return appear();
  if (isLast) return dismiss();
  nextLook_ = platform_.mainQueue().after(lookInterval, [this] { look(); });
}

void MenuBarHintWindowController::appear() {
  nextLook_.reset();
  leaving_.reset();
  const auto [view, frame] = bubbleFor(seen_.frame, platform_.screens());
  const double margin = (panelSize.width - view.pillWidth) / 2;
  window_ = std::make_unique<PageWindow>(
      platform_, PageWindowStyle{{.ignoresMouseEvents = true}, margin, view.outline()},
      LocalizedRoot{[view = view] { return view; }}, [frame = frame](platform::Size) { return frame; });
  window_->host().setProposal({panelSize.width, panelSize.height});
  window_->host().update();
  window_->panel().setAlpha(0);
  window_->show();
  window_->panel().animateAlpha(1, appearance);
  dismissTimer_ = platform_.mainQueue().after(lifeTime, [this] { dismiss(); });
}

void MenuBarHintWindowController::watchClicks() {
  const auto dismissSoon = [this] { platform_.mainQueue().async(lifetime_.weak([this] { dismiss(); })); };
  auto& monitors = platform_.eventMonitors();
  globalClickMonitor_ = monitors.addGlobalMonitor(mouseDown, [dismissSoon](const auto&) { dismissSoon(); });
  localClickMonitor_ = monitors.addLocalMonitor(mouseDown, [dismissSoon](const platform::Event& event) {
    dismissSoon();
    return std::optional(event);
  });
}

void MenuBarHintWindowController::dismiss() {
  nextLook_.reset();
  dismissTimer_.reset();
  globalClickMonitor_.reset();
  localClickMonitor_.reset();
  if (!window_) return;
  leaving_ = std::move(window_);
  leaving_->panel().animateAlpha(0, departure, [this] {
    leaving_->panel().orderOut();
    platform_.mainQueue().async(lifetime_.weak([this] { leaving_.reset(); }));
  });
}

}  // namespace hushpane

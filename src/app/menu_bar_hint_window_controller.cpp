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
constexpr double gap = 1;  // points between the item and the tip of the tail
constexpr platform::EventMask mouseDown =
    maskOf(platform::EventType::leftMouseDown) | maskOf(platform::EventType::rightMouseDown);

Rect displayOf(const Rect& item, const platform::Screens& screens) {
  for (const auto& screen : screens.screens())
    if (screen.frame.contains({item.x + item.width / 2, item.y + item.height / 2})) return screen.frame;
  return {};
}

// The bubble beneath the middle of the item, or above it where the item is at the bottom; its tail points at the item
// also where the edge of the display leaves no room for the bubble beneath the middle.
struct Bubble {
  MenuBarHintView view;
  Rect frame;
};

Bubble bubbleAt(const Rect& item, const Rect& display) {
  MenuBarHintView view;
  const double middle = item.x + item.width / 2;
  const bool isAbove = placement::isAbove(item, display);
  const double wanted = middle - view.pillWidth / 2;
  const double x = std::max(display.x, std::min(wanted, display.right() - view.pillWidth));
  const double y = isAbove ? item.y - gap - view.pillHeight : item.bottom() + gap;
  view.tailOffset = wanted - x;
  if (isAbove) view.tailHeight = -view.tailHeight;
  return {view, {x, y, view.pillWidth, view.pillHeight}};
}

}  // namespace

MenuBarHintWindowController& MenuBarHintWindowController::shared() {
  return platform::Platform::current().instance<MenuBarHintWindowController>();
}

void MenuBarHintWindowController::show() {
  if (window_) return;
  const auto item = platform_.statusItem().frame();
  if (!item) return;
  leaving_.reset();
  const auto [view, frame] = bubbleAt(*item, displayOf(*item, platform_.screens()));
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
  const auto dismissSoon = [this] { platform_.mainQueue().async(lifetime_.weak([this] { dismiss(); })); };
  auto& monitors = platform_.eventMonitors();
  globalClickMonitor_ = monitors.addGlobalMonitor(mouseDown, [dismissSoon](const auto&) { dismissSoon(); });
  localClickMonitor_ = monitors.addLocalMonitor(mouseDown, [dismissSoon](const platform::Event& event) {
    dismissSoon();
    return std::optional(event);
  });
}

void MenuBarHintWindowController::dismiss() {
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

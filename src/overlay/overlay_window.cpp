#include "overlay/overlay_window.h"

namespace hushpane {

namespace {

constexpr platform::Animation shortFade{0.15, platform::TimingFunction::easeOut};
constexpr double shownAlpha = 0.01;         // above counts as shown
constexpr double nearlyOpaqueAlpha = 0.99;  // below gets a fade-in

constexpr platform::WindowConfiguration overlayConfiguration{
    .isOpaque = false,
    .hasShadow = false,
    .ignoresMouseEvents = true,
    .canBecomeKeyWindow = false,
    .canBecomeMainWindow = false,
    .canHide = false,
    .hidesOnDeactivate = false,
    .collectionBehavior = platform::collectionBehavior::canJoinAllSpaces | platform::collectionBehavior::stationary |
                          platform::collectionBehavior::ignoresCycle,
};

}  // namespace

OverlayWindow::OverlayWindow(platform::DisplayId screenID, const platform::Rect& screenFrame,
                             platform::Platform& platform, PreferencesStore& preferences)
    : screenID(screenID),
      window_(platform.windows().makeWindow(screenFrame, overlayConfiguration)),
      contentView_(*window_, platform, preferences) {
  window_->setAlpha(0);
}

bool OverlayWindow::isShown() const {
  return window_->isVisible() || window_->alpha() > shownAlpha;
}

void OverlayWindow::hideAtOnce() {
  window_->setAlpha(0);
  window_->orderOut();
}

void OverlayWindow::fadeInShortly() {
  if (!window_->isVisible()) {
    window_->setAlpha(0);
    window_->orderFront();
  }
  if (window_->alpha() < nearlyOpaqueAlpha) window_->animateAlpha(1, shortFade);
}

}  // namespace hushpane

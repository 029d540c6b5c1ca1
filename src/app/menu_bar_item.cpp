#include "app/menu_bar_item.h"

#include <utility>

#include "localization/language_manager.h"
#include "ui/localized.h"
#include "ui/menu/menu_bar_icon.h"

namespace hushpane {

namespace {

std::string titleOf(VeilMode mode) {
  switch (mode) {
    case VeilMode::standard: return localized("Standard"_key);
    case VeilMode::cleanDesktop: return localized("Ambience"_key);
    case VeilMode::focus: return localized("Focus"_key);
    case VeilMode::reveal: break;
  }
  return localized("Reveal"_key);
}

}  // namespace

MenuBarItem::MenuBarItem(platform::Platform& platform) : platform_(platform), tooltip_(platform) {
  // An announcement comes before the change.
  const auto changed = [this] {
    if (std::exchange(isUpdateQueued_, true)) return;
    platform_.mainQueue().async(lifetime_.weak([this] {
      isUpdateQueued_ = false;
      update();
    }));
  };
  state_ = StateController::shared().observe(changed);
  language_ = LanguageManager::shared().observe(changed);
  update();
}

void MenuBarItem::update() {
  const auto& state = StateController::shared();
  const bool isActive =
      !state.isRevealHeld() && (state.userMode() == VeilMode::cleanDesktop || state.userMode() == VeilMode::focus);
  auto& item = platform_.statusItem();
  item.setImage({menuBarIconSize, [isActive](platform::Canvas& canvas, double pixelsPerPoint) {
                   drawMenuBarIcon(canvas, pixelsPerPoint, isActive);
                 }});
  auto text = localized("Hushpane"_key) + ": " + titleOf(state.isRevealHeld() ? VeilMode::reveal : state.userMode());
  if (std::exchange(toolTipText_, std::move(text)) != toolTipText_) hideToolTip();
  item.setToolTip(toolTipText_);
}

}  // namespace hushpane

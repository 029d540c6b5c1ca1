#include "app/tooltip_controller.h"

#include <utility>

#include "app/panel_chrome.h"
#include "app/panel_placement.h"
#include "ui/localized_root.h"

namespace hushpane {

namespace {

constexpr double widest = 260;       // points
constexpr double underPointer = 20;  // points, so that the pointer hides nothing
constexpr double distance = 2;       // points from the icon and from the edges

declarative::Element tooltipPage(const std::string& text) {
  return LocalizedRoot{[text] {
    return declarative::text(text, platform::Font{.size = 11})
        .padding({.top = 4, .leading = 8, .bottom = 4, .trailing = 8});
  }};
}

}  // namespace

void TooltipController::pointerMoved(PageWindow& window) {
  const auto text = window.tooltip();
  if (tooltip_ && text == text_) return;
  hide();
  text_ = text;
  if (!text) return;
  waiting_ = platform_.mainQueue().after(pause, [this, text] {
    const auto pointer = platform_.eventMonitors().mouseLocation();
    show(*text, [this, pointer](platform::Size size) { return belowPointer(size, pointer); });
  });
}

void TooltipController::pointerOnIcon(const std::string& text) {
  hide();
  waiting_ = platform_.mainQueue().after(pause, [this, text] {
    if (platform_.statusItem().frame()) show(text, [this](platform::Size size) { return besideIcon(size); });
  });
}

void TooltipController::hide() {
  waiting_.reset();
  tooltip_.reset();
  text_.reset();
}

platform::Rect TooltipController::belowPointer(platform::Size size, platform::Point pointer) const {
  for (const auto& screen : platform_.screens().screens())
    if (screen.frame.contains(pointer))
      return placement::pullDown({pointer.x, pointer.y - underPointer / 4, 0, 1.25 * underPointer}, size, screen.frame,
                                 distance);
  return {pointer.x, pointer.y + underPointer, size.width, size.height};
}

platform::Rect TooltipController::besideIcon(platform::Size size) const {
  const auto icon = platform_.statusItem().frame().value_or(platform::Rect{});
  for (const auto& screen : platform_.screens().screens())
    if (screen.frame.contains({icon.x + icon.width / 2, icon.y + icon.height / 2}))
      return placement::beside(icon, size, screen.frame, screen.frame, distance);
  return {icon.x, icon.bottom(), size.width, size.height};
}

void TooltipController::show(const std::string& text, PageWindow::Place place) {
  tooltip_ = std::make_unique<PageWindow>(
      platform_, PageWindowStyle{{.ignoresMouseEvents = true}, chrome::tooltip.margin, chrome::tooltip.outline()},
      chrome::tooltip.around(tooltipPage(text)), std::move(place));
  tooltip_->host().setProposal({widest, std::nullopt});
  tooltip_->host().update();
  tooltip_->show();
}

}  // namespace hushpane

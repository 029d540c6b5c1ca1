#include "app/tooltip_controller.h"

#include <utility>

#include "app/panel_chrome.h"
#include "app/panel_placement.h"
#include "ui/localized_root.h"

namespace hushpane {

namespace {

constexpr double widest = 260;       // points
constexpr double belowPointer = 20;  // points, so that the pointer hides nothing

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
  if (text) waiting_ = platform_.mainQueue().after(pause, [this, text] { show(*text); });
}

void TooltipController::hide() {
  waiting_.reset();
  tooltip_.reset();
  text_.reset();
}

void TooltipController::show(const std::string& text) {
  const auto pointer = platform_.eventMonitors().mouseLocation();
  const auto place = [this, pointer](platform::Size size) {
    for (const auto& screen : platform_.screens().screens())
      if (screen.frame.contains(pointer))
        return placement::pullDown({pointer.x, pointer.y - belowPointer / 4, 0, 1.25 * belowPointer}, size,
                                   screen.frame, 2);
    return platform::Rect{pointer.x, pointer.y + belowPointer, size.width, size.height};
  };
  tooltip_ = std::make_unique<PageWindow>(
      platform_, PageWindowStyle{{.ignoresMouseEvents = true}, chrome::tooltip.margin, chrome::tooltip.outline()},
      chrome::tooltip.around(tooltipPage(text)), place);
  tooltip_->host().setProposal({widest, std::nullopt});
  tooltip_->host().update();
  tooltip_->show();
}

}  // namespace hushpane

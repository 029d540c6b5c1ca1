#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/page_window.h"
#include "platform/platform.h"

namespace hushpane {

// Shows what a page, or the program's icon, says of the place where the pointer has rested for a while; until the
// pointer is elsewhere.
class TooltipController {
 public:
  static constexpr double pause = 0.6;  // seconds

  explicit TooltipController(platform::Platform& platform) : platform_(platform) {}

  void pointerMoved(PageWindow& window);
  // The pointer has come over the icon.
  void pointerOnIcon(const std::string& text);
  void hide();

 private:
  void show(const std::string& text, PageWindow::Place place);
  platform::Rect belowPointer(platform::Size size, platform::Point pointer) const;
  platform::Rect besideIcon(platform::Size size) const;

  platform::Platform& platform_;
  std::optional<std::string> text_;  // shown, or to be shown
  platform::WorkItem waiting_;
  std::unique_ptr<PageWindow> tooltip_;
};

}  // namespace hushpane

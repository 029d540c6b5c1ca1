#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/page_window.h"
#include "app/tooltip_controller.h"
#include "platform/lifetime.h"
#include "platform/platform.h"

namespace hushpane {

// The panel at the program's icon: opens and closes it, and what opens from it. A page is made at each opening and goes
// at the closing, so that a closed panel keeps nothing.
class PanelController {
 public:
  PanelController(platform::Platform& platform, std::function<declarative::Element()> page);
  ~PanelController();

  bool isOpen() const { return panel_ != nullptr; }
  // At the icon; where the desktop has none or does not tell where, at `clicked`, else in a corner of the display with
  // the pointer.
  void open(std::optional<platform::Point> clicked = std::nullopt);
  void close();
  // The icon was clicked.
  void toggle(std::optional<platform::Point> clicked);
  // A short message beside the icon, or the panel, for a few seconds.
  void showMessage(std::string text);

 private:
  struct Anchor {
    platform::Rect item;
    platform::Rect display;
    platform::Rect visible;
  };
  Anchor findAnchor(std::optional<platform::Point> clicked) const;
  Anchor anchorAt(const platform::Rect& item) const;
  bool keyPressed(const platform::KeyPress& press);
  void openList(const declarative::MenuRequest& request);
  void closeList();
  void watchClicks();
  void clickedElsewhere(const platform::Event& event);
  bool hasJustClosedFor(std::optional<platform::Point> clicked) const;

  platform::Platform& platform_;
  std::function<declarative::Element()> page_;
  Anchor anchor_;
  std::unique_ptr<PageWindow> panel_;
  std::unique_ptr<PageWindow> list_;
  std::unique_ptr<PageWindow> message_;
  TooltipController tooltips_;
  platform::Token globalClicks_, activations_, pickers_;
  platform::WorkItem messageEnd_;
  struct ClosingClick {
    double time = 0;
    platform::Point location;
  };
  std::optional<ClosingClick> closingClick_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane

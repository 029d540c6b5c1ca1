#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "declarative/host.h"
#include "platform/lifetime.h"
#include "platform/platform.h"

namespace hushpane {

// How a page stands on the desktop.
struct PageWindowStyle {
  platform::PanelConfiguration panel;
  double margin = 0;  // points around the page, for its shadow; part of the page
  declarative::Shape outline = declarative::Rectangle{};
};

// A page in a panel of its own: as large as the page, drawn as the page changes, in the appearance of the desktop. The
// page takes the pointer; keys go to the owner first.
class PageWindow : public platform::PanelContents {
 public:
  // Where the panel is for a page of that size, without the margin; called again whenever the size changes.
  using Place = std::function<platform::Rect(platform::Size)>;

  PageWindow(platform::Platform& platform, const PageWindowStyle& style, declarative::Element page, Place place);
  ~PageWindow() override;

  // Returns whether the key was used; the page gets those that were not.
  std::function<bool(const platform::KeyPress&)> onKey;
  std::function<void()> onPointer;  // after the pointer moved, or a button or the wheel
  std::function<void()> onPress;    // before a button goes down
  std::function<void(const declarative::MenuRequest&)> onMenu;

  // Offers the page no more than that height.
  void setMaximumHeight(double height);
  void show();
  // The page has left the screen; the panel may still fade out.
  void leave() { host_->leave(); }
  // The place may be another one.
  void updateFrame();

  platform::Panel& panel() { return *panel_; }
  declarative::Host& host() { return *host_; }
  // From the page's coordinates to the desktop's.
  platform::Rect onDesktop(const platform::Rect& onPage) const;
  // Of the place where the pointer is.
  std::optional<std::string> tooltip() const;

  void paint(platform::Canvas& canvas, const platform::Rect& visible) override { host_->paint(canvas, visible); }
  void pointerMoved(platform::Point point) override;
  void pointerExited() override;
  void pointerDown(platform::Point point) override;
  void pointerUp(platform::Point point) override;
  void scrolled(double delta) override;
  void keyPressed(const platform::KeyPress& press) override;

 private:
  void pageChanged();

  platform::Platform& platform_;
  PageWindowStyle style_;
  Place place_;
  std::unique_ptr<platform::Panel> panel_;
  std::unique_ptr<declarative::Host> host_;
  std::optional<platform::Point> pointer_;
  platform::Token appearance_;
  platform::Lifetime lifetime_;
};

// The desktop's appearance, as pages inherit it.
declarative::Environment environmentOf(const platform::SystemAppearance& appearance);

}  // namespace hushpane

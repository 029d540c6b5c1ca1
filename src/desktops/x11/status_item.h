#pragma once

#include <functional>
#include <string>

#include "desktops/session/status_notifier_item.h"
#include "desktops/x11/tray_icon.h"
#include "platform/lifetime.h"
#include "platform/status_item.h"

namespace hushpane::x11 {

// The program's icon with a host of status notifiers while there is one, else in the system tray while there is one.
// Hosts show the tool tip themselves and tell no frame; in the tray it is the other way round, and who shows the tool
// tip hears of the pointer.
class X11StatusItem : public platform::StatusItem {
 public:
  X11StatusItem(const IconServices& services, session::DbusSession& session, platform::SystemAppearance& appearance);

  void setImage(platform::TemplateImage image) override;
  void setToolTip(std::string text) override;
  void setClickHandler(ClickHandler handler) override { clickHandler_ = std::move(handler); }
  void setHoverHandler(std::function<void(bool)> handler) override { hoverHandler_ = std::move(handler); }
  bool isShown() const override;
  std::optional<platform::Rect> frame() const override;

 private:
  bool isHosted() const { return notifier_.hosting() == session::StatusNotifierItem::Hosting::present; }
  void chooseTray();
  void clicked(platform::Point point);
  void activated(int x, int y);
  void hovered(bool isHovered);

  IconServices services_;
  platform::TemplateImage image_;
  ClickHandler clickHandler_;
  std::function<void(bool)> hoverHandler_;
  TrayIcon tray_;
  session::StatusNotifierItem notifier_;
  platform::Token appearanceChanges_;
  platform::Lifetime lifetime_;
};

}  // namespace hushpane::x11

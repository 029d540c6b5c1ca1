#include "desktops/x11/status_item.h"

#include <utility>

#include "desktops/x11/clicked_place.h"

namespace hushpane::x11 {

X11StatusItem::X11StatusItem(const IconServices& services, session::DbusSession& session,
                             platform::SystemAppearance& appearance)
    : services_(services),
      tray_(services, {.clicked = [this](platform::Point point) { clicked(point); },
                       .hovered = [this](bool isHovered) { hovered(isHovered); }}),
      notifier_(session, appearance,
                {.activated = [this](int x, int y) { activated(x, y); }, .hostingChanged = [this] { chooseTray(); }}),
      appearanceChanges_(appearance.observe([this] { tray_.groundChanged(); })) {}

void X11StatusItem::setImage(platform::TemplateImage image) {
  image_ = image;
  notifier_.setImage(std::move(image));
  chooseTray();
}

void X11StatusItem::setToolTip(std::string text) {
  notifier_.setToolTip(std::move(text));
}

bool X11StatusItem::isShown() const {
  return image_.draw && (isHosted() || tray_.isShown());
}

std::optional<platform::Rect> X11StatusItem::frame() const {
  return isHosted() ? std::nullopt : tray_.frame();
}

// While the bus is being asked the icon stays away from the tray, where it would only flash.
void X11StatusItem::chooseTray() {
  const bool isTrayWanted = notifier_.hosting() == session::StatusNotifierItem::Hosting::absent;
  tray_.setImage(isTrayWanted ? image_ : platform::TemplateImage{});
}

void X11StatusItem::clicked(platform::Point point) {
  services_.queue.async(lifetime_.weak([this, point] {
    if (const auto handler = clickHandler_) handler(point);
  }));
}

// Hosts that know no place tell the corner of the root.
void X11StatusItem::activated(int x, int y) {
  const auto pointer = services_.monitors.mouseLocation();
  const auto told = services_.screens.toPoints({x, y, 0, 0});
  clicked(x == 0 && y == 0 ? pointer : clickedPlace({told.x, told.y}, pointer, services_.screens));
}

void X11StatusItem::hovered(bool isHovered) {
  services_.queue.async(lifetime_.weak([this, isHovered] {
    if (const auto handler = hoverHandler_) handler(isHovered);
  }));
}

}  // namespace hushpane::x11

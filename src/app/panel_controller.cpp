#include "app/panel_controller.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "app/panel_chrome.h"
#include "app/panel_placement.h"
#include "ui/controls/pull_down_list.h"
#include "ui/localized_root.h"
#include "ui/menu/wallpaper_picker.h"

namespace hushpane {

using platform::Point;
using platform::Rect;
using platform::Size;

namespace {

constexpr double distance = 6;  // points between the panel and the icon or an edge
constexpr double messageSeconds = 6;
constexpr double messageWidth = 300;     // points, at most
constexpr double secondsOfOneClick = 1;  // from the press that closed the panel to the icon's own click
constexpr double reachOfIcon = 40;       // points

bool isNear(Point left, Point right) {
  return std::hypot(left.x - right.x, left.y - right.y) <= reachOfIcon;
}

platform::EventMask mouseDown() {
  return maskOf(platform::EventType::leftMouseDown) | maskOf(platform::EventType::rightMouseDown);
}

Rect onWholePoints(const Rect& rect) {
  const double x = std::round(rect.x), y = std::round(rect.y);
  return {x, y, std::round(rect.right()) - x, std::round(rect.bottom()) - y};
}

// Under every X11 keyboard one of the two is where people expect it.
bool isQuit(const platform::KeyPress& press) {
  return press.letter == "q" && (press.has(platform::modifier::control) || press.has(platform::modifier::command));
}

}  // namespace

PanelController::PanelController(platform::Platform& platform, std::function<declarative::Element()> page)
    : platform_(platform), page_(std::move(page)), tooltips_(platform) {}

PanelController::~PanelController() {
  close();
}

PanelController::Anchor PanelController::anchorAt(const Rect& item) const {
  const Point middle{item.x + item.width / 2, item.y + item.height / 2};
  const auto& screens = platform_.screens().screens();
  if (screens.empty()) return {item, {}, {}};
  const auto found = std::ranges::find_if(screens, [&](const auto& screen) { return screen.frame.contains(middle); });
  const auto& screen = found == screens.end() ? screens.front() : *found;
  return {item, screen.frame, platform_.screens().visibleFrame(screen)};
}

PanelController::Anchor PanelController::findAnchor(std::optional<Point> clicked) const {
  if (const auto icon = platform_.statusItem().frame()) return anchorAt(*icon);
  if (clicked) return anchorAt({clicked->x, clicked->y, 0, 0});
  const Point pointer = platform_.eventMonitors().mouseLocation();
  auto anchor = anchorAt({pointer.x, pointer.y, 0, 0});
  anchor.item = placement::corner(anchor.display, anchor.visible);
  return anchor;
}

void PanelController::open(std::optional<Point> clicked) {
  if (panel_) return;
  message_.reset();
  anchor_ = findAnchor(clicked);
  const auto place = [this](Size size) {
    return placement::beside(anchor_.item, size, anchor_.display, anchor_.visible, distance);
  };
  panel_ = std::make_unique<PageWindow>(
      platform_,
      PageWindowStyle{
          {.ignoresMouseEvents = false, .takesKeyboard = true}, chrome::panel.margin, chrome::panel.outline()},
      chrome::panel.around(page_()), place);
  panel_->onKey = [this](const auto& press) { return keyPressed(press); };
  panel_->onPointer = [this] { tooltips_.pointerMoved(*panel_); };
  panel_->onPress = [this] {
    tooltips_.hide();
    closeList();
  };
  panel_->onMenu = [this](const auto& request) { openList(request); };
  if (const double height = anchor_.visible.height; height > 0)
    panel_->setMaximumHeight(height - 2 * distance + 2 * chrome::panel.margin);
  panel_->show();
  watchClicks();
}

void PanelController::close() {
  globalClicks_.reset();
  activations_.reset();
  pickers_.reset();
  tooltips_.hide();
  list_.reset();
  const auto closed = std::move(panel_);
  if (closed) closed->leave();
}

void PanelController::toggle(std::optional<Point> clicked) {
  if (panel_) return close();
  // The press of this click has closed the panel already.
  if (hasJustClosedFor(clicked)) return closingClick_.reset();
  open(clicked);
}

bool PanelController::hasJustClosedFor(std::optional<Point> clicked) const {
  if (!closingClick_ || platform_.mainQueue().now() - closingClick_->time > secondsOfOneClick) return false;
  if (const auto icon = platform_.statusItem().frame()) return icon->contains(closingClick_->location);
  // Some desktops do not tell where it was, or tell where the icon is; the pointer is still there.
  const Point pointer = platform_.eventMonitors().mouseLocation();
  return isNear(pointer, closingClick_->location) || (clicked && isNear(*clicked, closingClick_->location));
}

void PanelController::watchClicks() {
  auto& monitors = platform_.eventMonitors();
  globalClicks_ = monitors.addGlobalMonitor(mouseDown(), [this](const platform::Event& event) {
    platform_.mainQueue().async(lifetime_.weak([this, event] { clickedElsewhere(event); }));
  });
  // Not inside what tells of it: the page may be the one.
  const auto closeSoon = [this] { platform_.mainQueue().async(lifetime_.weak([this] { close(); })); };
  activations_ =
      platform_.workspace().notificationCenter().addObserver(platform::notification::didActivateApplication, closeSoon);
  pickers_ = platform_.notificationCenter().addObserver(wallpaperPickerWillOpen, closeSoon);
}

void PanelController::clickedElsewhere(const platform::Event& event) {
  if (!panel_) return;
  closingClick_ = ClosingClick{platform_.mainQueue().now(), event.location};
  close();
}

bool PanelController::keyPressed(const platform::KeyPress& press) {
  tooltips_.hide();
  if (isQuit(press)) {
    platform_.application().terminate();
    return true;
  }
  if (press.key != platform::Key::escape) return false;
  if (list_)
    closeList();
  else
    close();
  return true;
}

void PanelController::openList(const declarative::MenuRequest& request) {
  tooltips_.hide();
  const Rect label = onWholePoints(panel_->onDesktop(request.anchor));
  const auto entries = request.entries;
  const auto choose = [this, entries](std::size_t index) {
    closeList();
    if (index < entries.size() && entries[index].action) entries[index].action();
  };
  const auto place = [this, label](Size size) { return placement::pullDown(label, size, anchor_.visible, distance); };
  list_ = std::make_unique<PageWindow>(
      platform_,
      PageWindowStyle{
          {.ignoresMouseEvents = false, .takesKeyboard = true}, chrome::list.margin, chrome::list.outline()},
      chrome::list.around(LocalizedRoot{[entries, choose] {
        return PullDownList{entries, choose};
      }}),
      place);
  list_->onKey = [this](const auto& press) { return keyPressed(press); };
  list_->setMaximumHeight(placement::room(label, anchor_.visible, distance) + 2 * chrome::list.margin);
  list_->show();
}

void PanelController::closeList() {
  if (const auto closed = std::move(list_)) closed->leave();
}

void PanelController::showMessage(std::string text) {
  const auto anchor = panel_ ? anchorAt(panel_->panel().frame()) : findAnchor(std::nullopt);
  message_ = std::make_unique<PageWindow>(
      platform_, PageWindowStyle{{.ignoresMouseEvents = true}, chrome::list.margin, chrome::list.outline()},
      chrome::list.around(
          LocalizedRoot{[text] { return declarative::text(text, platform::Font{.size = 12}).padding(12); }}),
      [anchor](Size size) { return placement::beside(anchor.item, size, anchor.display, anchor.visible, distance); });
  message_->host().setProposal({messageWidth, std::nullopt});
  message_->host().update();
  message_->show();
  messageEnd_ = platform_.mainQueue().after(messageSeconds, [this] { message_.reset(); });
}

}  // namespace hushpane

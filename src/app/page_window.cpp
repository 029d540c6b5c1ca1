#include "app/page_window.h"

#include <cmath>
#include <utility>

namespace hushpane {

using declarative::Environment;
using platform::Point;
using platform::Rect;
using platform::Size;

Environment environmentOf(const platform::SystemAppearance& appearance) {
  Environment environment;
  environment.appearance = appearance.isDark() ? declarative::Appearance::dark : declarative::Appearance::light;
  if (const auto accent = appearance.accentColor()) environment.accent = declarative::fixed(*accent);
  return environment;
}

PageWindow::PageWindow(platform::Platform& platform, const PageWindowStyle& style, declarative::Element page,
                       Place place)
    : platform_(platform),
      style_(style),
      place_(std::move(place)),
      panel_(platform.panels().makePanel(style.panel, *this)),
      host_(std::make_unique<declarative::Host>(
          declarative::Host::Services{platform.mainQueue(), platform.frameClock(), platform.textEngine(),
                                      [this](const declarative::MenuRequest& request) {
                                        if (const auto open = onMenu) open(request);
                                      }},
          std::move(page), environmentOf(platform.appearance()), [this] { pageChanged(); })) {
  appearance_ = platform.appearance().observe(
      lifetime_.weak([this] { host_->setEnvironment(environmentOf(platform_.appearance())); }));
}

PageWindow::~PageWindow() = default;

void PageWindow::setMaximumHeight(double height) {
  host_->setProposal({std::nullopt, height});
  host_->update();
}

void PageWindow::show() {
  updateFrame();
  panel_->orderFront();
}

Rect PageWindow::onDesktop(const Rect& onPage) const {
  const Rect frame = panel_->frame();
  return {frame.x + onPage.x, frame.y + onPage.y, onPage.width, onPage.height};
}

std::optional<std::string> PageWindow::tooltip() const {
  return pointer_ ? host_->tooltip(*pointer_) : std::nullopt;
}

void PageWindow::updateFrame() {
  const double margin = style_.margin;
  const Size shown = host_->size();
  const Rect outline{margin, margin, shown.width - 2 * margin, shown.height - 2 * margin};
  const Rect place = place_({std::ceil(shown.width - 2 * margin), std::ceil(shown.height - 2 * margin)});
  panel_->setFrame({place.x - margin, place.y - margin, place.width + 2 * margin, place.height + 2 * margin});
  panel_->setOutline(declarative::pathOf(style_.outline, outline),
                     declarative::windowBackground.in(host_->environment().appearance));
  host_->setScale(platform_.screens().scaleOf(panel_->outlineFrame()));
}

void PageWindow::pageChanged() {
  updateFrame();
  panel_->setNeedsDisplay(host_->takeDamage());
}

void PageWindow::pointerMoved(Point point) {
  pointer_ = point;
  const auto alive = lifetime_.watch();
  host_->pointerMoved(point);
  if (alive.expired()) return;
  if (const auto told = onPointer) told();
}

void PageWindow::pointerExited() {
  pointer_.reset();
  const auto alive = lifetime_.watch();
  host_->pointerExited();
  if (alive.expired()) return;
  if (const auto told = onPointer) told();
}

void PageWindow::pointerDown(Point point) {
  const auto alive = lifetime_.watch();
  if (const auto told = onPress) told();
  if (!alive.expired()) host_->pointerDown(point);
}

void PageWindow::pointerUp(Point point) {
  host_->pointerUp(point);
}

void PageWindow::scrolled(double delta) {
  if (!pointer_) return;
  const auto alive = lifetime_.watch();
  host_->scrolled(*pointer_, delta);
  if (alive.expired()) return;
  if (const auto told = onPointer) told();
}

void PageWindow::keyPressed(const platform::KeyPress& press) {
  const auto alive = lifetime_.watch();
  const auto handle = onKey;
  if (handle && handle(press)) return;
  if (!alive.expired()) host_->keyPressed(press);
}

}  // namespace hushpane

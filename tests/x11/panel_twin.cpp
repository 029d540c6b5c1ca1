#include "tests/x11/panel_twin.h"

#include <cmath>

#include "app/hushpane_app.h"
#include "desktops/shared/cairo_canvas.h"
#include "desktops/sim/shown_texts.h"
#include "state/stored_keys.h"
#include "tests/x11/session.h"

namespace hushpane::x11_tests {

PanelTwin::PanelTwin(bool hasSeenWelcome, double scale) : scale_(scale) {
  const auto inPoints = [scale](const Rect& pixels) {
    return Rect{pixels.x / scale, pixels.y / scale, pixels.width / scale, pixels.height / scale};
  };
  const std::vector<platform::Screen> screens{{inPoints(Session::leftMonitor), 1, "LEFT", scale},
                                              {inPoints(Session::rightMonitor), 2, "RIGHT", scale}};
  storage_.standardDefaults.insert_or_assign(std::string(storedKeys::hasSeenWelcome), hasSeenWelcome);
  desktop_ = std::make_unique<sim::SimPlatform>(storage_, screens, HUSHPANE_SOURCE_DIR "/resources");
  desktop_->taskQueue().setAutomatic(true);
  desktop_->setStatusBar(sim::SimStatusItem::Bar::bottom);
  HushpaneApp::launch(*desktop_);
  desktop_->drain();
}

void PanelTwin::clickIcon() {
  click(center(*desktop_->statusItem().frame()));
}

void PanelTwin::click(Point onDesktop) {
  desktop_->pointer().click(onDesktop);
  settle();
}

void PanelTwin::type(std::uint16_t key, platform::ModifierFlags modifiers) {
  if (modifiers) desktop_->eventMonitors().pressModifier(modifiers);
  desktop_->typeKey(key);
  if (modifiers) desktop_->eventMonitors().releaseModifier(modifiers);
  settle();
}

std::optional<PanelTwin::Place> PanelTwin::find(const std::string& text) {
  const auto& panels = desktop_->panels().shown();
  for (std::size_t panel = 0; panel < panels.size(); ++panel)
    for (const auto& shown : sim::shownTexts(*panels[panel]))
      if (shown.text == text) {
        const Point middle = center(shown.frame);
        return Place{panel, {middle.x - frame(panel).x, middle.y - frame(panel).y}};
      }
  return std::nullopt;
}

Picture PanelTwin::picture(std::size_t panel) {
  const auto& shown = *desktop_->panels().shown().at(panel);
  const Rect all{0, 0, shown.frame().width, shown.frame().height};
  platform::Image image{
      static_cast<int>(std::lround(all.width * scale_)), static_cast<int>(std::lround(all.height * scale_)), {}};
  image.pixels.resize(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
  {
    desktops::CairoCanvas canvas(image, scale_);
    canvas.fill(platform::rectanglePath(all), shown.ground());
    shown.contents().paint(canvas, all);
  }
  for (auto& pixel : image.pixels) pixel &= 0xffffff;
  return {image.width, image.height, std::move(image.pixels)};
}

}  // namespace hushpane::x11_tests

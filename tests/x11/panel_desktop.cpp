#include "tests/x11/panel_desktop.h"

#include <algorithm>
#include <sstream>

namespace hushpane::x11_tests {

void PanelDesktop::startWithIcon(bool hasSeenWelcome) {
  start(hasSeenWelcome);
  if (tray_ && !waitUntil([&] { return icon().has_value(); })) throw std::runtime_error("no icon in the tray");
}

void PanelDesktop::startScaled(double scale) {
  constexpr double ordinaryDpi = 96;
  const auto resources = logs() / "resources";
  writeFile(resources, "Xft.dpi: " + std::to_string(int(ordinaryDpi * scale)) + "\n");
  runTool({"xrdb", "-nocpp", "-load", resources.string()});
  scale_ = scale;
  start(true);
}

void PanelDesktop::start(bool hasSeenWelcome) {
  settings().write({{"hasSeenWelcome", xml(hasSeenWelcome)},
                    {"hushpane.ambientSurface", xml("dim")},
                    {"hushpane.focusSurface", xml("dim")}});
  twin_.reset();
  twin_ = std::make_unique<PanelTwin>(hasSeenWelcome, scale_);
  twin_->desktop().userDefaults().set("hushpane.ambientSurface", std::string("dim"));
  twin_->desktop().userDefaults().set("hushpane.focusSurface", std::string("dim"));
  twin_->desktop().drain();
  startHushpane();
}

Rect PanelDesktop::inPixels(const Rect& points) const {
  return {points.x * scale_, points.y * scale_, points.width * scale_, points.height * scale_};
}

std::vector<Rect> PanelDesktop::panels() const {
  std::vector<Rect> frames;
  for (const auto window : x().stacking())
    if (x().text(window, "_NET_WM_NAME") == "Hushpane panel" && x().isOnScreen(window))
      frames.push_back(x().bounds(window));
  std::ranges::reverse(frames);
  return frames;
}

testing::AssertionResult PanelDesktop::hasPanels(std::size_t count, milliseconds limit) const {
  if (waitUntil([&] { return panels().size() == count; }, limit)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << panels().size() << " panels instead of " << count;
}

void PanelDesktop::waitForTwin() {
  const auto isAlike = [&] {
    const auto frames = panels();
    if (frames.size() != twin_->panelCount()) return false;
    for (std::size_t index = 0; index < frames.size(); ++index) {
      const Rect wanted = inPixels(twin_->frame(index));
      if (std::abs(frames[index].width - wanted.width) > 1 || std::abs(frames[index].height - wanted.height) > 1)
        return false;
    }
    return true;
  };
  if (waitUntil(isAlike)) return;
  std::ostringstream sizes;
  for (const auto& frame : panels()) sizes << ' ' << frame.width << 'x' << frame.height;
  sizes << " instead of";
  for (std::size_t index = 0; index < twin_->panelCount(); ++index)
    sizes << ' ' << inPixels(twin_->frame(index)).width << 'x' << inPixels(twin_->frame(index)).height;
  ADD_FAILURE() << "panels of" << sizes.str();
}

void PanelDesktop::clickIcon() {
  Session::click(center(icon().value_or(Rect{})));
  twin_->clickIcon();
  waitForTwin();
}

void PanelDesktop::click(const std::string& text) {
  const auto place = twin_->find(text);
  ASSERT_TRUE(place) << "no panel shows " << text;
  const auto frames = panels();
  ASSERT_LT(place->panel, frames.size());
  const Rect frame = frames[place->panel], twin = twin_->frame(place->panel);
  Session::click({frame.x + place->onPanel.x * scale_, frame.y + place->onPanel.y * scale_});
  twin_->click({twin.x + place->onPanel.x, twin.y + place->onPanel.y});
  waitForTwin();
}

void PanelDesktop::clickAt(Point onFrontPanel) {
  ASSERT_FALSE(panels().empty());
  const Rect panel = outline(), twin = twin_->frame(0), inside = twin_->outline(0);
  Session::click({panel.x + onFrontPanel.x * scale_, panel.y + onFrontPanel.y * scale_});
  twin_->click({twin.x + inside.x + onFrontPanel.x, twin.y + inside.y + onFrontPanel.y});
  waitForTwin();
}

void PanelDesktop::clickElsewhere(Point point) {
  Session::click(point);
  twin_->click({20, 20});
  waitForTwin();
}

void PanelDesktop::key(const std::string& name, std::uint16_t code, platform::ModifierFlags modifiers) {
  keyboard("key", name);
  twin_->type(code, modifiers);
  waitForTwin();
}

Rect PanelDesktop::outline() {
  const Rect frame = panels().front(), inside = inPixels(twin_->outline(0));
  return {frame.x + inside.x, frame.y + inside.y, inside.width, inside.height};
}

testing::AssertionResult PanelDesktop::isLikeTwin() const {
  const auto frames = panels();
  if (frames.empty() || frames.size() != twin_->panelCount())
    return testing::AssertionFailure() << frames.size() << " panels";
  const auto wanted = twin_->picture(0);
  const Rect inside = inPixels(twin_->outline(0));
  // Where it begins between two pixels, it may be one larger or smaller.
  const double tolerance = scale_ == 1 ? 0 : 1;
  if (std::abs(frames[0].width - wanted.width) > tolerance || std::abs(frames[0].height - wanted.height) > tolerance)
    return testing::AssertionFailure() << "the panel is " << frames[0].width << " by " << frames[0].height;
  const int corner = std::min(int(14 * scale_), int(inside.height) / 3);  // where the desktop shows through
  const int left = int(inside.x) + 2, top = int(inside.y) + corner;
  const int width = int(inside.width) - 4, height = int(inside.height) - 2 * corner;
  const auto seen = x().capture({frames[0].x + left, frames[0].y + top, double(width), double(height)});
  for (int row = 0; row < height; ++row)
    for (int column = 0; column < width; ++column)
      if (!isNear(seen.at(column, row), wanted.at(left + column, top + row), 6))
        return testing::AssertionFailure() << seen.at(column, row) << " instead of "
                                           << wanted.at(left + column, top + row) << " at " << column << ',' << row;
  return testing::AssertionSuccess();
}

testing::AssertionResult PanelDesktop::looksAsItShould() {
  twin_->settle();
  testing::AssertionResult result = isLikeTwin();
  waitUntil([&] { return (result = isLikeTwin()); });
  return result;
}

}  // namespace hushpane::x11_tests

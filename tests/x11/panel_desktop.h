#pragma once

#include "tests/x11/both_ways.h"
#include "tests/x11/panel_twin.h"
#include "tests/x11/tray.h"

namespace hushpane::x11_tests {

// A desktop with a tray in which the program's icon stands, and the means to use the panel as people do: with a mouse,
// by what it says.
class PanelDesktop : public BothWays {
 protected:
  static constexpr Pixel trayGround{0x202428};

  void startTray(Tray::Edge edge = Tray::Edge::bottom, int height = Tray::height) {
    tray_ = std::make_unique<Tray>(environment(), logs(), x(), Tray::Look{trayGround, edge, height});
  }
  void endTray() { tray_.reset(); }
  // Starts the program, and waits for its icon where there is a tray.
  void startWithIcon(bool hasSeenWelcome = true);
  // The same on a desktop that has so many pixels per point.
  void startScaled(double scale);

  std::optional<Rect> icon() const { return Tray::iconFrame(x()); }
  // The frames of the panels on screen, from front to back, shadows included.
  std::vector<Rect> panels() const;
  testing::AssertionResult hasPanels(std::size_t count, milliseconds limit = patience) const;

  // Each waits until the program shows as many panels of the same sizes as its twin.
  void clickIcon();
  void click(const std::string& text);
  void clickAt(Point onFrontPanel);  // in points from the top left of the panel itself
  void clickElsewhere(Point point);
  void key(const std::string& name, std::uint16_t code, platform::ModifierFlags modifiers = 0);

  // Where the panel in front itself is, without its shadow.
  Rect outline();
  // Whether the panel in front looks as it does on the twin's desktop.
  testing::AssertionResult looksAsItShould();
  PanelTwin& twin() { return *twin_; }
  void waitForTwin();

 private:
  void start(bool hasSeenWelcome);
  testing::AssertionResult isLikeTwin() const;
  Rect inPixels(const Rect& points) const;

  std::unique_ptr<Tray> tray_;
  std::unique_ptr<PanelTwin> twin_;
  double scale_ = 1;
};

}  // namespace hushpane::x11_tests

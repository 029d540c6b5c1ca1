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

  void startTray() { tray_ = std::make_unique<Tray>(environment(), logs(), x(), trayGround); }
  void endTray() { tray_.reset(); }
  // Starts the program, and waits for its icon where there is a tray.
  void startWithIcon(bool hasSeenWelcome = true);

  std::optional<Rect> icon() const { return Tray::iconFrame(x()); }
  // The frames of the panels on screen, from front to back, shadows included.
  std::vector<Rect> panels() const;
  testing::AssertionResult hasPanels(std::size_t count, milliseconds limit = patience) const;

  // Each waits until the program shows as many panels of the same sizes as its twin.
  void clickIcon();
  void click(const std::string& text);
  void clickAt(Point onFrontPanel);  // from the top left of the panel itself
  void clickElsewhere(Point point);
  void key(const std::string& name, std::uint16_t code, platform::ModifierFlags modifiers = 0);

  // Whether the panel in front looks as it does on the twin's desktop.
  testing::AssertionResult looksAsItShould();
  PanelTwin& twin() { return *twin_; }
  void waitForTwin();

 private:
  testing::AssertionResult isLikeTwin() const;

  std::unique_ptr<Tray> tray_;
  std::unique_ptr<PanelTwin> twin_;
};

}  // namespace hushpane::x11_tests

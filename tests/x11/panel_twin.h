#pragma once

#include <memory>
#include <string>
#include <vector>

#include "desktops/sim/sim_platform.h"
#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {

// The program a second time, on a simulated desktop of the same shape in the test's own process: it tells where the
// panel shows what, and what it looks like there. Whatever is done to the program is done to it, too.
class PanelTwin {
 public:
  PanelTwin(bool hasSeenWelcome, double scale);

  sim::SimPlatform& desktop() { return *desktop_; }
  // Time passes until nothing moves any more.
  void settle() { desktop_->advance(1.5); }
  void clickIcon();
  void click(Point onDesktop);
  void type(std::uint16_t key, platform::ModifierFlags modifiers = 0);

  // The panels that are shown, from front to back.
  std::size_t panelCount() { return desktop_->panels().shown().size(); }
  Rect frame(std::size_t panel) { return desktop_->panels().shown().at(panel)->frame(); }
  // Of the panel itself, without its shadow, from the frame's top left.
  Rect outline(std::size_t panel) { return desktop_->panels().shown().at(panel)->outline().controlBounds(); }
  // The middle of a text.
  struct Place {
    std::size_t panel = 0;
    Point onPanel;  // from the frame's top left
  };
  std::optional<Place> find(const std::string& text);
  // The pixels of its frame at the scale of the screens, on the panel's ground.
  Picture picture(std::size_t panel);

 private:
  double scale_;
  sim::Storage storage_;
  std::unique_ptr<sim::SimPlatform> desktop_;
};

}  // namespace hushpane::x11_tests

#pragma once

#include <utility>

#include "desktops/sim/sim_notification_center.h"
#include "platform/screen.h"

namespace hushpane::sim {

// Displays that come and go by script. The program hears of each change with the next turn of the main queue.
class SimScreens : public platform::Screens {
 public:
  SimScreens(SimNotificationCenter& center, std::vector<platform::Screen> screens)
      : center_(center), screens_(std::move(screens)) {}

  const std::vector<platform::Screen>& screens() const override { return screens_; }

  platform::Rect visibleFrame(const platform::Screen& screen) const override;

  // From here on so much of the main screen's top and bottom is taken by bars; points.
  void setBars(double top, double bottom) {
    topBar_ = top;
    bottomBar_ = bottom;
  }
  // Replaces the whole arrangement.
  void set(std::vector<platform::Screen> screens);
  void add(platform::Screen screen);
  // Each returns false when there is no screen of that id.
  bool change(platform::DisplayId id, const platform::Rect& frame, double scale = 1);
  bool remove(platform::DisplayId id);

  const platform::Screen* find(platform::DisplayId id) const;

 private:
  SimNotificationCenter& center_;
  std::vector<platform::Screen> screens_;
  double topBar_ = 0;
  double bottomBar_ = 0;
};

}  // namespace hushpane::sim

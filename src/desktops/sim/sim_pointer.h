#pragma once

#include "desktops/sim/sim_event_monitors.h"
#include "desktops/sim/sim_panels.h"
#include "desktops/sim/sim_status_item.h"

namespace hushpane::sim {

// A mouse used by script. What it does reaches what is beneath it with the next turn of the main queue: a panel of the
// program, else its icon, else somebody else.
class SimPointer {
 public:
  SimPointer(SimMainQueue& queue, SimPanels& panels, SimStatusItem& statusItem, SimEventMonitors& monitors)
      : queue_(queue), panels_(panels), statusItem_(statusItem), monitors_(monitors) {}

  void moveTo(platform::Point point);
  void press();
  void release();
  void click(platform::Point point);
  void pressRightButton();
  // Points by which the wheel is turned, positive downwards.
  void scroll(double delta);

 private:
  bool isIconAt(platform::Point point) const;
  void meet(platform::Point point);
  void tellMonitors(platform::EventType type);

  SimMainQueue& queue_;
  SimPanels& panels_;
  SimStatusItem& statusItem_;
  SimEventMonitors& monitors_;
  SimPanel* hovered_ = nullptr;
  SimPanel* pressed_ = nullptr;
  bool isIconPressed_ = false;
};

}  // namespace hushpane::sim

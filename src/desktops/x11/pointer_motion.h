#pragma once

#include <xcb/xinput.h>

#include <functional>
#include <map>
#include <optional>

#include "desktops/x11/connection.h"

namespace hushpane::x11 {

// One device's horizontal axis: turns what it reports into steps of the pointer, in pixels.
class HorizontalAxis {
 public:
  HorizontalAxis() = default;                                                // of a device that reports steps
  HorizontalAxis(double least, double most) : least_(least), most_(most) {}  // of one that reports positions

  // `width` of the desktop, which the range of positions spans. 0 at the first position.
  double step(double value, double width);

 private:
  double positionStep(double position);

  double least_ = 0;
  double most_ = 0;  // not more than the least: the axis has no range
  std::optional<double> position_;
  double run_ = 0;  // how far it went to the right since it went to the left
};

// How far the pointer is moved sideways, from raw motion. It asks the server about a device at its first motion, and
// again when devices changed; else motion costs nothing but its event.
class PointerMotion {
 public:
  // `desktopWidth` gives pixels.
  PointerMotion(Connection& connection, std::function<double()> desktopWidth)
      : connection_(connection), desktopWidth_(std::move(desktopWidth)) {}

  // Pixels; nothing when the motion has no horizontal part.
  std::optional<double> step(const xcb_input_raw_motion_event_t& motion);
  // Devices came, went or changed.
  void forgetDevices() { axes_.clear(); }

 private:
  HorizontalAxis axisOf(xcb_input_device_id_t device) const;

  Connection& connection_;
  std::function<double()> desktopWidth_;
  std::map<xcb_input_device_id_t, HorizontalAxis> axes_;
};

}  // namespace hushpane::x11

#include "desktops/x11/pointer_motion.h"

#include <utility>

#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

constexpr std::uint16_t horizontal = 0;  // the number of the axis
constexpr double longestRunOfSteps = 3;  // widths of the desktop
constexpr double fractionsOfOne = 1ull << 32;

double valueOf(const xcb_input_fp3232_t& number) {
  return number.integral + number.frac / fractionsOfOne;
}

}  // namespace

// Remote-control tools and virtual pointers report positions on an axis that says it reports steps. Positions are never
// negative, so they add up to a run that no hand makes; a negative value is always a step.
double HorizontalAxis::step(double value, double width) {
  if (most_ > least_) return positionStep((value - least_) / (most_ - least_) * width);
  run_ = value < 0 ? 0 : run_ + value;
  if (run_ > longestRunOfSteps * width) return positionStep(value);
  position_.reset();
  return value;
}

double HorizontalAxis::positionStep(double position) {
  const auto before = std::exchange(position_, position);
  return before ? position - *before : 0;
}

std::optional<double> PointerMotion::step(const xcb_input_raw_motion_event_t& motion) {
  const auto* mask = xcb_input_raw_button_press_valuator_mask(&motion);
  if (motion.valuators_len == 0 || !(mask[0] & 1u << horizontal)) return std::nullopt;
  auto axis = axes_.find(motion.sourceid);
  if (axis == axes_.end()) axis = axes_.emplace(motion.sourceid, axisOf(motion.sourceid)).first;
  return axis->second.step(valueOf(*xcb_input_raw_button_press_axisvalues(&motion)), desktopWidth_());
}

HorizontalAxis PointerMotion::axisOf(xcb_input_device_id_t device) const {
  auto* server = connection_.get();
  const Reply<xcb_input_xi_query_device_reply_t> reply(
      xcb_input_xi_query_device_reply(server, xcb_input_xi_query_device(server, device), nullptr));
  if (!reply || reply->num_infos == 0) return {};
  const auto info = xcb_input_xi_query_device_infos_iterator(reply.get());
  for (auto each = xcb_input_xi_device_info_classes_iterator(info.data); each.rem > 0;
       xcb_input_device_class_next(&each)) {
    if (each.data->type != XCB_INPUT_DEVICE_CLASS_TYPE_VALUATOR) continue;
    const auto& valuator = *reinterpret_cast<const xcb_input_valuator_class_t*>(each.data);
    if (valuator.number == horizontal && valuator.mode == XCB_INPUT_VALUATOR_MODE_ABSOLUTE)
      return {valueOf(valuator.min), valueOf(valuator.max)};
  }
  return {};
}

}  // namespace hushpane::x11

#include "desktops/x11/event_monitors.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "desktops/x11/xcb_handle.h"

namespace hushpane::x11 {

namespace {

using platform::EventType;
using platform::maskOf;

constexpr std::uint16_t unknownKeyCode = 0xFFFF;
constexpr std::uint32_t leftButton = 1, rightButton = 3;

struct PointerPlace {
  int x = 0, y = 0;  // pixels of the root
  bool isInside = false;
};

// Where the pointer is, and whether one of `windows` is the window beneath it or holds that one. Asks level by level.
PointerPlace findPointer(Connection& connection, const std::vector<xcb_window_t>& windows) {
  PointerPlace place;
  for (auto window = connection.root(); window != XCB_WINDOW_NONE && !place.isInside;) {
    const Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection.get(), xcb_query_pointer(connection.get(), window), nullptr));
    if (!reply) break;
    place.x = reply->root_x;
    place.y = reply->root_y;
    window = windows.empty() ? xcb_window_t{XCB_WINDOW_NONE} : reply->child;
    place.isInside = std::ranges::find(windows, window) != windows.end();
  }
  return place;
}

double rightEdgeOf(const Screens& screens) {
  double edge = 0;
  for (const auto& screen : screens.screens()) edge = std::max<double>(edge, screens.toPixels(screen.frame).right());
  return edge;
}

}  // namespace

EventMonitors::EventMonitors(Connection& connection, KeyboardMap& keyboard, const Screens& screens)
    : connection_(connection),
      screens_(screens),
      keyboard_(keyboard),
      modifiers_(connection),
      motion_(connection, [&screens] { return rightEdgeOf(screens); }),
      xinput_(connection.extension(Extension::xinput)),
      events_(connection.addEventHandler([this](const xcb_generic_event_t& event) { handle(event); })) {}

platform::Token EventMonitors::addGlobalMonitor(platform::EventMask mask, GlobalHandler handler) {
  if (!xinput_) return {};
  return watching(mask, global_.add([mask, handler = std::move(handler)](const platform::Event& event) {
    if (mask & maskOf(event.type)) handler(event);
  }));
}

platform::Token EventMonitors::addLocalMonitor(platform::EventMask mask, LocalHandler handler) {
  if (!xinput_) return {};
  return watching(mask, local_.add([mask, handler = std::move(handler)](std::optional<platform::Event>& event) {
    if (event && (mask & maskOf(event->type))) event = handler(*event);
  }));
}

platform::Token EventMonitors::addOwnWindow(xcb_window_t window) {
  ownWindows_.push_back(window);
  return platform::Token(lifetime_.weak([this, window] { std::erase(ownWindows_, window); }));
}

platform::Token EventMonitors::watching(platform::EventMask mask, platform::Token handler) {
  ++watched_[mask];
  updateSelection();
  const auto held = std::make_shared<platform::Token>(std::move(handler));
  auto forget = lifetime_.weak([this, mask] {
    --watched_[mask];
    updateSelection();
  });
  return platform::Token([held, forget]() mutable {
    held->reset();
    forget();
  });
}

void EventMonitors::updateSelection() {
  platform::EventMask wanted = 0;
  for (const auto& [mask, count] : watched_)
    if (count > 0) wanted |= mask;
  std::uint32_t raw = 0, devices = 0;
  if (wanted & maskOf(EventType::keyDown)) raw |= XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS;
  if (wanted & (maskOf(EventType::leftMouseDown) | maskOf(EventType::rightMouseDown)))
    raw |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
  if (wanted & maskOf(EventType::mouseMoved)) {
    raw |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    devices = XCB_INPUT_XI_EVENT_MASK_DEVICE_CHANGED | XCB_INPUT_XI_EVENT_MASK_HIERARCHY;
    motion_.forgetDevices();
  }
  if (std::exchange(selected_, raw) == raw) return;
  const struct {
    xcb_input_event_mask_t mastersHead;
    std::uint32_t masters;
    xcb_input_event_mask_t allHead;
    std::uint32_t all;
  } request{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, raw, {XCB_INPUT_DEVICE_ALL, 1}, devices};
  xcb_input_xi_select_events(connection_.get(), connection_.root(), 2, &request.mastersHead);
}

void EventMonitors::handle(const xcb_generic_event_t& event) {
  if (modifiers_.handle(event))
    deliver({.type = EventType::flagsChanged, .modifierFlags = modifiers_.flags()}, isOwnWindowFocused_);
  if (event.response_type == XCB_GE_GENERIC) handleRawEvent(event);
}

void EventMonitors::handleRawEvent(const xcb_generic_event_t& event) {
  const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
  if (!xinput_ || raw.extension != xinput_->majorOpcode) return;
  switch (raw.event_type) {
    case XCB_INPUT_RAW_KEY_PRESS: return handleRawKey(static_cast<xcb_keycode_t>(raw.detail));
    case XCB_INPUT_RAW_BUTTON_PRESS: return handleRawButton(raw.detail);
    case XCB_INPUT_RAW_MOTION: return handleMotion(reinterpret_cast<const xcb_input_raw_motion_event_t&>(event));
    case XCB_INPUT_HIERARCHY: return motion_.forgetDevices();
    case XCB_INPUT_DEVICE_CHANGED: {
      // The pointer being taken over by another device is no change of either.
      const auto& change = reinterpret_cast<const xcb_input_device_changed_event_t&>(event);
      if (change.reason == XCB_INPUT_CHANGE_REASON_DEVICE_CHANGE) motion_.forgetDevices();
      return;
    }
    default: return;
  }
}

void EventMonitors::handleRawKey(xcb_keycode_t keycode) {
  if (keyboard_.isModifierKey(keycode)) return;
  deliver({.type = EventType::keyDown,
           .modifierFlags = modifiers_.flags(),
           .keyCode = keyboard_.virtualKeyCode(keycode).value_or(unknownKeyCode)},
          isOwnWindowFocused_);
}

void EventMonitors::handleMotion(const xcb_input_raw_motion_event_t& motion) {
  const platform::Event event{.type = EventType::mouseMoved,
                              .modifierFlags = modifiers_.flags(),
                              .deltaX = motion_.step(motion).value_or(0) / screens_.scale()};
  global_.forEach([&event](const auto& handler) { handler(event); });
}

void EventMonitors::handleRawButton(std::uint32_t button) {
  if (button != leftButton && button != rightButton) return;
  const auto place = findPointer(connection_, ownWindows_);
  const auto point = screens_.toPoints({place.x, place.y, 0, 0});
  deliver({.type = button == leftButton ? EventType::leftMouseDown : EventType::rightMouseDown,
           .modifierFlags = modifiers_.flags(),
           .location = {point.x, point.y}},
          place.isInside);
}

void EventMonitors::deliver(const platform::Event& event, bool isOwn) {
  if (isOwn) {
    std::optional<platform::Event> passed = event;
    local_.forEach([&passed](const auto& handler) { handler(passed); });
  } else {
    global_.forEach([&event](const auto& handler) { handler(event); });
  }
}

platform::Point EventMonitors::mouseLocation() const {
  const auto place = findPointer(connection_, {});
  const auto point = screens_.toPoints({place.x, place.y, 0, 0});
  return {point.x, point.y};
}

}  // namespace hushpane::x11
